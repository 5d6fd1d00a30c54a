#pragma once

#include "platform/Menu.h"

class QWidget;

namespace larkspool {

// The editing items of a menu, at work on a text control.
bool IsEditRole(MenuRole role);
bool IsTextControl(const QWidget* widget);
bool CanEdit(MenuRole role, const QWidget* text); // false for anything but a text control
void Edit(MenuRole role, QWidget* text);

} // namespace larkspool
