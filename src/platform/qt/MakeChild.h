#pragma once

#include <QWidget>

#include <utility>

namespace larkspool {

// Makes a widget that is owned by its parent.
template <typename Widget, typename... Arguments>
Widget& MakeChild(QWidget& parent, Arguments&&... arguments) {
    return *new Widget(std::forward<Arguments>(arguments)..., &parent);
}

} // namespace larkspool
