#include "platform/qt/Fonts.h"

#include "platform/CheckBox.h"
#include "platform/Label.h"
#include "platform/PushButton.h"
#include "platform/Window.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QStringList>

#include <algorithm>
#include <array>
#include <string>

namespace larkspool {

namespace {

constexpr int WishedSize = 13; // pixels
constexpr int SmallestSize = 9;
constexpr int Gap = 4;           // points between a label and the control that overlaps it
constexpr int CheckBoxPart = 20; // the box itself and the space after it
constexpr int ButtonMargins = 10;

int Width(const QFontMetrics& metrics, const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text));
}

bool Fits(const QFontMetrics& metrics, const Window& window, const Control& control) {
    const int room = control.Bounds().width;
    if (const auto* label = dynamic_cast<const Label*>(&control)) {
        const int shown = label->mayBeCut ? 0 : Width(metrics, label->Text());
        return std::max(shown, Width(metrics, label->longest)) <= RoomForLabel(window, *label);
    }
    if (const auto* box = dynamic_cast<const CheckBox*>(&control)) {
        return Width(metrics, box->caption) <= room - CheckBoxPart;
    }
    if (const auto* button = dynamic_cast<const PushButton*>(&control)) {
        return Width(metrics, button->Caption()) <= room - ButtonMargins;
    }
    return true;
}

bool AreInOneRow(const Rect& first, const Rect& second) {
    return first.top < second.top + second.height && second.top < first.top + first.height;
}

} // namespace

QFont LargestFont() {
    static constexpr std::array Families = {"Noto Sans", "Cantarell", "Inter", "Liberation Sans",
                                            "DejaVu Sans"};
    const QStringList installed = QFontDatabase::families();
    QFont font;
    for (const char* family : Families) {
        if (installed.contains(QLatin1String(family))) {
            font.setFamily(QLatin1String(family));
            break;
        }
    }
    font.setPixelSize(WishedSize);
    return font;
}

QFont FittingFont(const Window& window, QFont font) {
    for (int size = font.pixelSize(); size >= SmallestSize; --size) {
        font.setPixelSize(size);
        const QFontMetrics metrics(font);
        const auto& controls = window.Controls();
        if (std::all_of(controls.begin(), controls.end(),
                        [&](const Control* control) { return Fits(metrics, window, *control); })) {
            break;
        }
    }
    return font;
}

void FitApplicationFont(const Window& window) {
    const QFont present = QApplication::font();
    const QFont fitting = FittingFont(window, present);
    if (fitting.pixelSize() != present.pixelSize()) {
        QApplication::setFont(fitting);
    }
}

int RoomForLabel(const Window& window, const Label& label) {
    const Rect& own = label.Bounds();
    int right = own.left + own.width;
    for (const Control* other : window.Controls()) {
        const Rect& there = other->Bounds();
        if (other->Visible() && AreInOneRow(own, there) && there.left > own.left &&
            there.left < right && dynamic_cast<const Label*>(other) == nullptr) {
            right = there.left - Gap;
        }
    }
    return std::max(0, right - own.left);
}

} // namespace larkspool
