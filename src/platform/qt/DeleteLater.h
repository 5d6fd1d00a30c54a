#pragma once

#include <QObject>

#include <memory>
#include <utility>

namespace larkspool {

// Deletes a Qt object that may be in the middle of an event: at the loop's next turn.
struct DeleteLater {
    void operator()(QObject* object) const {
        object->disconnect();
        object->deleteLater();
    }
};

template <typename Object>
using OwnedByLoop = std::unique_ptr<Object, DeleteLater>;

template <typename Object, typename... Arguments>
OwnedByLoop<Object> MakeOwnedByLoop(Arguments&&... arguments) {
    return OwnedByLoop<Object>(new Object(std::forward<Arguments>(arguments)...));
}

} // namespace larkspool
