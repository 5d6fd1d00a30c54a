#pragma once

#include "platform/Listbox.h"

#include <string>
#include <utility>

namespace larkspool {

// Stands in for a cell of the first row that the user is typing in.
class OpenEdit : public ControlView {
  public:
    OpenEdit(Listbox& edited, int editedColumn, std::string typed)
        : ControlView(edited), column(editedColumn), text(std::move(typed)) {}

    void Changed(Aspect /*aspect*/) override {}
    void CommitEdit() override { static_cast<Listbox*>(Model())->SetCell(0, column, text); }

  private:
    int column;
    std::string text;
};

} // namespace larkspool
