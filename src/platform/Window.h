#pragma once

#include "platform/Control.h"
#include "platform/Menu.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {

class Desktop;
class Window;

enum class WindowAspect { Title, Size, Visible };

// Draws one window with its controls and the menu bar. Made by the desktop, owned by the window.
class WindowView {
  public:
    virtual ~WindowView() = default;
    virtual void Changed(WindowAspect aspect) = 0;
    virtual void ComeToFront() = 0;
};

// A window: a size, a title and the controls in it. Sizes are of the content, in points; without
// the menu bar. Owned by the program; its controls are members of the derived class.
class Window {
  public:
    explicit Window(Desktop& theDesktop);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    const std::string& Title() const { return title; }
    void SetTitle(std::string text);

    int Width() const { return width; }
    int Height() const { return height; }
    void Resize(int newWidth, int newHeight); // clamped; controls follow their locks
    void SetHeight(int newHeight) { Resize(width, newHeight); }

    bool Visible() const { return visible; }
    void Show(); // also brings the window to the front
    void Hide();

    // What the close button does: asks Event_CancelClose, hides the window, raises closed.
    void Close();

    // Ends the open edits in its controls and keeps their texts.
    void CommitEdits() const;

    // Expires with this window: for answers that may come after its end.
    std::weak_ptr<const void> LifeToken() const { return life; }

    // True keeps the window open.
    virtual bool Event_CancelClose([[maybe_unused]] bool appQuitting) { return false; }

    // In the order in which they were made: stacking order and tab order.
    const std::vector<Control*>& Controls() const { return controls; }

    // Has the keyboard focus when the window appears; null: any control.
    Control* firstFocus = nullptr;
    int minimumWidth = 64;
    int minimumHeight = 64;
    int maximumWidth = 32000;
    int maximumHeight = 32000;
    std::vector<int> hairlines; // y of the fine lines between the rows of controls
    MenuHandlers menuHandlers;  // the menu items that this window handles while it is in front
    std::function<void()> closed;

  protected:
    void SetDesignSize(int designedWidth, int designedHeight);
    void AddControl(Control& control) { controls.push_back(&control); }

    Desktop& desktop;

  private:
    void Notify(WindowAspect aspect) const;

    std::string title;
    int designWidth = 0;
    int designHeight = 0;
    int width = 0;
    int height = 0;
    bool visible = false;
    std::vector<Control*> controls;
    std::unique_ptr<WindowView> view;
    std::shared_ptr<const void> life = std::make_shared<int>(0);
};

} // namespace larkspool
