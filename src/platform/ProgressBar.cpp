#include "platform/ProgressBar.h"

namespace larkspool {

void ProgressBar::SetValue(int amount) {
    if (value != amount) {
        value = amount;
        Notify(Aspect::Value);
    }
}

} // namespace larkspool
