#pragma once

#include "platform/Label.h"
#include "platform/qt/WidgetView.h"

#include <QFont>
#include <QLabel>
#include <QRawFont>

#include <array>

namespace larkspool {

class Window;

// A label that can draw its text letter by letter from a table: figures that change several times
// a second would cost more to lay out than to draw.
class FigureLabel : public QLabel {
  public:
    using QLabel::QLabel;

    bool changesOften = false;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Letter {
        quint32 glyph = 0;
        qreal width = 0;
    };

    void MakeTable();
    void DrawLetters();

    QFont tableFont; // the one that the table is of
    QRawFont rawFont;
    std::array<Letter, 95> table; // the characters from blank to tilde
};

class LabelView : public ViewOf<Label, FigureLabel> {
  public:
    LabelView(Label& label, Desktop& theDesktop, QWidget& content, const Window& home);

    void Place() override;
    void SetBuddy(QWidget& named) { shape.setBuddy(&named); }

  protected:
    void Redraw(Aspect aspect) override;

  private:
    void ShowCut();

    const Window& window;
};

} // namespace larkspool
