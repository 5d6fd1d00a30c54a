#include "platform/qt/LabelView.h"

#include "platform/qt/ContentArea.h"
#include "platform/qt/Fonts.h"
#include "platform/qt/MakeChild.h"

#include <QFontMetrics>
#include <QGlyphRun>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <vector>

namespace larkspool {

namespace {

constexpr char16_t FirstLetter = u' ';
constexpr char16_t LastLetter = u'~';

bool IsInTable(QChar letter) { return letter >= FirstLetter && letter <= LastLetter; }

} // namespace

void FigureLabel::paintEvent(QPaintEvent* event) {
    const QString shown = text();
    if (!changesOften || !std::all_of(shown.begin(), shown.end(), IsInTable)) {
        QLabel::paintEvent(event);
        return;
    }
    if (!rawFont.isValid() || tableFont != font()) {
        MakeTable();
    }
    DrawLetters();
}

void FigureLabel::MakeTable() {
    tableFont = font();
    rawFont = QRawFont::fromFont(tableFont);
    const QFontMetricsF metrics(tableFont);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const QChar letter(static_cast<char16_t>(FirstLetter + i));
        table[i] = {rawFont.glyphIndexesForString(letter).value(0),
                    metrics.horizontalAdvance(letter)};
    }
}

void FigureLabel::DrawLetters() {
    const QString shown = text();
    std::vector<quint32> glyphs;
    std::vector<QPointF> places;
    qreal x = 0;
    for (const QChar letter : shown) {
        const Letter& drawn = table[static_cast<std::size_t>(letter.unicode() - FirstLetter)];
        glyphs.push_back(drawn.glyph);
        places.emplace_back(x, 0);
        x += drawn.width;
    }
    QGlyphRun run;
    run.setRawFont(rawFont);
    run.setRawData(glyphs.data(), places.data(), static_cast<int>(glyphs.size()));
    const QFontMetrics metrics = fontMetrics();
    const int baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawGlyphRun(QPointF(0, baseline), run);
}

LabelView::LabelView(Label& label, Desktop& theDesktop, QWidget& content, const Window& home)
    : ViewOf(label, theDesktop, MakeChild<FigureLabel>(content)), window(home) {
    shape.setTextFormat(Qt::PlainText);
    shape.changesOften = !label.longest.empty();
    shape.setAutoFillBackground(true); // spares the window painting beneath
    // Labels may reach under other controls and mustn't take the mouse from them.
    shape.setAttribute(Qt::WA_TransparentForMouseEvents, !label.mouseEnter && !label.mayBeCut);
    LabelView::Redraw(Aspect::Value);
    LabelView::Redraw(Aspect::Color);
}

void LabelView::Place() {
    const Rect& place = Held()->Bounds();
    // With a fixed size, a new text causes no new layout of the window.
    shape.setFixedSize(RoomForLabel(window, *Held()), place.height);
    shape.move(place.left, place.top);
    if (Held()->mayBeCut) {
        ShowCut();
    }
}

// A screen reader is given the whole text too.
void LabelView::ShowCut() {
    const QString whole = QString::fromStdString(Held()->Text());
    const QString shown = shape.fontMetrics().elidedText(whole, Qt::ElideRight, shape.width());
    const QString rest = shown == whole ? QString() : whole;
    shape.setToolTip(rest);
    if (shape.accessibleName() != rest) {
        shape.setAccessibleName(rest);
    }
    shape.setText(shown);
}

void LabelView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        const auto set = [this] {
            if (Held()->mayBeCut) {
                ShowCut();
            } else {
                shape.setText(QString::fromStdString(Held()->Text()));
            }
        };
        if (ContentArea* const area = ContentAreaOf(shape)) {
            area->ChangeHeld(shape, set);
        } else {
            set();
        }
    } else if (aspect == Aspect::Color && Held()->TextColor()) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, QColor(Held()->TextColor()->Packed()));
        shape.setPalette(palette);
        shape.setAccessibleName(QString::fromStdString(Held()->spokenName));
    }
}

} // namespace larkspool
