#include "platform/qt/Palettes.h"

#include <QColor>

namespace larkspool {

namespace {

struct Tones {
    QRgb window, text, faint, field, fieldAlternate, button, border, groove, highlight, accent,
        handle;
};

constexpr Tones LightTones = {0xfff3f4f7, 0xff1c2129, 0xff8f96a3, 0xffffffff,
                              0xfff3f4f7, 0xfffdfdfe, 0xffc3c9d4, 0xffd5d9e2,
                              0xff4a57c9, 0xff4a57c9, 0xffffffff};
constexpr Tones DarkTones = {0xff20242b, 0xffe4e7ec, 0xff7d8591, 0xff171a20, 0xff20242b, 0xff2c323b,
                             0xff3d4450, 0xff3a414d, 0xff4a55b8, 0xff7f8cf5, 0xffc9cfdb};

// ProxyStyle uses these roles for its own tones: Mid is a border, Midlight a groove, Link the
// accent, BrightText a slider's handle.
QPalette MakePalette(const Tones& tones) {
    QPalette palette;
    palette.setColor(QPalette::Window, tones.window);
    palette.setColor(QPalette::Base, tones.field);
    palette.setColor(QPalette::AlternateBase, tones.fieldAlternate);
    palette.setColor(QPalette::Button, tones.button);
    palette.setColor(QPalette::ToolTipBase, tones.button);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, tones.text);
        palette.setColor(QPalette::Disabled, role, tones.faint);
    }
    palette.setColor(QPalette::PlaceholderText, tones.faint);
    palette.setColor(QPalette::Light, QColor(tones.button).lighter(110));
    palette.setColor(QPalette::Midlight, tones.groove);
    palette.setColor(QPalette::Mid, tones.border);
    palette.setColor(QPalette::Dark, QColor(tones.border).darker(130));
    palette.setColor(QPalette::Shadow, QColor(tones.border).darker(180));
    palette.setColor(QPalette::Highlight, tones.highlight);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, tones.border);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, tones.accent);
    palette.setColor(QPalette::Disabled, QPalette::Link, tones.border);
    palette.setColor(QPalette::LinkVisited, tones.accent);
    palette.setColor(QPalette::BrightText, tones.handle);
    return palette;
}

} // namespace

QPalette LightPalette() { return MakePalette(LightTones); }

QPalette DarkPalette() { return MakePalette(DarkTones); }

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

} // namespace larkspool
