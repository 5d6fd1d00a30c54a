#include "platform/qt/ProxyStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace larkspool {

namespace {

constexpr int IndicatorSize = 15;
constexpr int CellMargin = 3;
constexpr int HandleSize = 14;
constexpr int GrooveHeight = 4;
constexpr int GrooveCenter = 10; // below the slider's top, in line with a label 20 high
constexpr int GrooveMargin = 2;
constexpr int ArrowPart = 18; // of a combo box, at its right
constexpr double Radius = 3.5;

QColor BorderOf(const QStyleOption& option) {
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    return option.palette.color(focused ? QPalette::Link : QPalette::Mid);
}

QColor ButtonFillOf(const QStyleOption& option) {
    const QColor fill = option.palette.color(QPalette::Button);
    if (option.state.testFlag(QStyle::State_Sunken) || option.state.testFlag(QStyle::State_On)) {
        return fill.darker(112);
    }
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver) &&
                         option.state.testFlag(QStyle::State_Enabled);
    return hovered ? option.palette.color(QPalette::AlternateBase) : fill;
}

void DrawFrame(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& border) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(border, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
    painter.restore();
}

void DrawLine(QPainter& painter, const QPolygonF& line, const QColor& color, double width) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    painter.restore();
}

void DrawIndicator(QPainter& painter, const QStyleOption& option) {
    const bool ticked = option.state.testFlag(QStyle::State_On);
    const QColor accent = option.palette.color(QPalette::Link);
    const QColor border =
        ticked && !option.state.testFlag(QStyle::State_HasFocus) ? accent : BorderOf(option);
    DrawFrame(painter, option.rect, ticked ? accent : option.palette.color(QPalette::Base), border);
    if (ticked) {
        const QPointF corner = option.rect.topLeft();
        const QPolygonF tick({QPointF(3.8, 7.8), QPointF(6.4, 10.4), QPointF(11.2, 4.8)});
        DrawLine(painter, tick.translated(corner), Qt::white, 1.8);
    }
}

void DrawComboBox(QPainter& painter, const QStyleOption& option) {
    DrawFrame(painter, option.rect, ButtonFillOf(option), BorderOf(option));
    const QPointF center(option.rect.right() - 10.5,
                         option.rect.top() + option.rect.height() / 2.0);
    const QPolygonF arrow({QPointF(-3.5, -1.75), QPointF(0, 1.75), QPointF(3.5, -1.75)});
    DrawLine(painter, arrow.translated(center), option.palette.color(QPalette::ButtonText), 1.6);
}

void DrawGroove(QPainter& painter, const QRectF& place, const QBrush& fill) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(place, GrooveHeight / 2.0, GrooveHeight / 2.0);
}

void DrawSlider(QPainter& painter, const QStyleOption& option, const QRectF& groove,
                const QRectF& handle) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGroove(painter, groove, option.palette.brush(QPalette::Midlight));
    QRectF filled = groove;
    filled.setRight(handle.center().x());
    DrawGroove(painter, filled, option.palette.brush(QPalette::Link));
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    painter.setPen(focused ? QPen(option.palette.color(QPalette::Link), 1.6)
                           : QPen(option.palette.color(QPalette::Dark), 1));
    painter.setBrush(option.palette.brush(QPalette::BrightText));
    painter.drawEllipse(handle.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

// Fusion draws its line under the titles higher than under the rest of the bar.
void DrawMenuBarLine(QPainter& painter, const QStyleOption& option, const QWidget& bar) {
    if (option.rect.bottom() >= bar.height() - 1) {
        painter.fillRect(option.rect.left(), bar.height() - 1, option.rect.width(), 1,
                         option.palette.color(QPalette::Midlight));
    }
}

void DrawMenuTitle(QPainter& painter, const QStyleOptionMenuItem& title, const QStyle& style) {
    const bool open = title.state.testFlag(QStyle::State_Sunken);
    painter.fillRect(title.rect,
                     title.palette.color(open ? QPalette::Highlight : QPalette::Window));
    style.drawItemText(&painter, title.rect, Qt::AlignCenter | Qt::TextShowMnemonic, title.palette,
                       title.state.testFlag(QStyle::State_Enabled), title.text,
                       open ? QPalette::HighlightedText : QPalette::WindowText);
}

} // namespace

ProxyStyle::ProxyStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int ProxyStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    // A popup in the form of a menu would cover the screen with a thousand rows.
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

int ProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return IndicatorSize;
    case PM_CheckBoxLabelSpacing:
        return 5;
    case PM_FocusFrameHMargin:
        return qobject_cast<const QAbstractItemView*>(widget) != nullptr
                   ? CellMargin
                   : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_HeaderMargin:
        return CellMargin;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return HandleSize;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

// The menu bar's overflow button never shows, but Qt would read its picture from a file at every
// start.
QIcon ProxyStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                               const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton || icon == SP_ToolBarVerticalExtensionButton) {
        return {};
    }
    return QProxyStyle::standardIcon(icon, option, widget);
}

QRect ProxyStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const {
    const QRect& all = option->rect;
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        return all.adjusted(5, 1, -ArrowPart, -1);
    }
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_Slider && slider != nullptr && part == SC_SliderGroove) {
        return {all.left() + GrooveMargin, all.top() + GrooveCenter - GrooveHeight / 2,
                all.width() - 2 * GrooveMargin, GrooveHeight};
    }
    if (control == CC_Slider && slider != nullptr && part == SC_SliderHandle) {
        const int offset =
            sliderPositionFromValue(slider->minimum, slider->maximum, slider->sliderPosition,
                                    all.width() - HandleSize, slider->upsideDown);
        return {all.left() + offset, all.top() + GrooveCenter - HandleSize / 2, HandleSize,
                HandleSize};
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void ProxyStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        DrawFrame(*painter, option->rect, ButtonFillOf(*option), BorderOf(*option));
        return;
    case PE_IndicatorCheckBox:
        DrawIndicator(*painter, *option);
        return;
    case PE_PanelMenu: // Fusion's own is invisible in the dark scheme
        painter->fillRect(option->rect, option->palette.color(QPalette::Mid));
        painter->fillRect(option->rect.adjusted(1, 1, -1, -1),
                          option->palette.color(QPalette::Button));
        return;
    case PE_FrameFocusRect:
        // The frames show the focus themselves; only a table's cells have none.
        if (qobject_cast<const QAbstractItemView*>(widget) != nullptr) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
        return;
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame != nullptr && frame->lineWidth > 0) {
            DrawFrame(*painter, option->rect, option->palette.color(QPalette::Base),
                      BorderOf(*option));
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ProxyStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* title = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuBarItem && title != nullptr && widget != nullptr) {
        DrawMenuTitle(*painter, *title, *this);
        DrawMenuBarLine(*painter, *option, *widget);
    } else if (element == CE_MenuBarEmptyArea && widget != nullptr) {
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        DrawMenuBarLine(*painter, *option, *widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void ProxyStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    if (control == CC_ComboBox) {
        DrawComboBox(*painter, *option);
    } else if (control == CC_Slider) {
        DrawSlider(*painter, *option, subControlRect(CC_Slider, option, SC_SliderGroove, widget),
                   subControlRect(CC_Slider, option, SC_SliderHandle, widget));
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

} // namespace larkspool
