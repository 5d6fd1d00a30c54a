#pragma once

#include <functional>
#include <string>

namespace larkspool {

// Position in points from the window's content origin, y downwards.
struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Rect&) const = default;
};

// The window's edges that a control keeps its distance to when the window is resized.
struct Locks {
    bool left = true;
    bool top = true;
    bool right = false;
    bool bottom = false;
};

// The part of a control that has changed, so that its view redraws only that.
enum class Aspect { Value, Rows, Enabled, Visible, Color, Bounds, Picture, PictureRow };

class Control;

// Draws one control. Made and owned by the desktop's window view; either side may be destroyed
// first.
class ControlView {
  public:
    explicit ControlView(Control& shown);
    virtual ~ControlView();
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    virtual void Changed(Aspect aspect) = 0;
    virtual void CommitEdit() {} // ends an edit that is open and passes its text to the control

  protected:
    Control* Model() const { return model; } // null after the control is destroyed

  private:
    friend class Control;
    Control* model;
};

// The base of every control: a name, a place, whether it is enabled and visible. Owned by
// its window. A disabled or hidden control still takes values from code and raises its events.
class Control {
  public:
    Control() = default;
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    // Gives the control its code name and its place at the window's design size.
    void Place(std::string codeName, Rect designBounds, Locks edges = {});

    const std::string& Name() const { return name; }
    const Rect& Bounds() const { return bounds; }
    bool Enabled() const { return enabled; }
    bool Visible() const { return visible; }
    void SetEnabled(bool value);
    void SetVisible(bool value);

    // Moves the control to where its locks put it in a window that has grown by these sizes.
    void Follow(int grownWidth, int grownHeight);

    // Turns of the wheel in 120ths of a step, positive away from the user. They are summed
    // up; whole steps go to mouseWheel at once.
    void Wheel(int angleX, int angleY);
    bool TakesWheel() const { return static_cast<bool>(mouseWheel); }

    // Ends an edit that is open in the control and keeps its text.
    void CommitEdit() const;

    std::string spokenName; // what a screen reader says; empty for controls that speak their text

    // Events. They run on the event loop, inside the call that caused them.
    std::function<void(int deltaX, int deltaY)> mouseWheel; // whole steps
    std::function<void()> mouseEnter;
    std::function<void()> mouseExit;

  protected:
    void Notify(Aspect aspect) const;

  private:
    friend class ControlView;
    std::string name;
    Rect bounds;
    Rect design;
    Locks locks;
    bool enabled = true;
    bool visible = true;
    int wheelRestX = 0; // 120ths of a step not yet passed on
    int wheelRestY = 0;
    ControlView* view = nullptr;
};

} // namespace larkspool
