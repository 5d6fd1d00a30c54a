#pragma once

#include "platform/Menu.h"

class QLineEdit;

namespace larkspool {

// The editing items of a menu, applied to a text field.
bool IsEditRole(MenuRole role);
bool CanEdit(MenuRole role, const QLineEdit* field); // false without a field
void Edit(MenuRole role, QLineEdit& field);

} // namespace larkspool
