#include "platform/CheckBox.h"

namespace larkspool {

void CheckBox::SetValue(bool ticked) {
    if (value == ticked) {
        return;
    }
    value = ticked;
    Notify(Aspect::Value);
    if (action) {
        action();
    }
}

} // namespace larkspool
