#pragma once

#include <QWidget>

#include <memory>
#include <utility>

namespace larkspool {

// Makes a widget that its parent owns.
template <typename Widget, typename... Arguments>
Widget& MakeChild(QWidget& parent, Arguments&&... arguments) {
    auto child = std::make_unique<Widget>(std::forward<Arguments>(arguments)..., &parent);
    return *child.release();
}

} // namespace larkspool
