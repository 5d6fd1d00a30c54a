#include "platform/Desktop.h"

namespace larkspool {

bool Desktop::Answers(const MenuItem& item, const Window* front) const {
    return (front != nullptr && front->menuHandlers.Answers(item.name)) ||
           applicationHandlers.Answers(item.name);
}

void Desktop::Perform(const MenuItem& item, const Window* front) const {
    if (front != nullptr && front->menuHandlers.Answers(item.name)) {
        front->menuHandlers.Perform(item.name);
    } else {
        applicationHandlers.Perform(item.name);
    }
}

FolderItem Desktop::BesideProgramOrIn(SpecialFolder folder, const std::string& name) {
    auto beside = Folder(SpecialFolder::Program).Child(name);
    return beside && beside->Exists() ? *beside : *Folder(folder).Child(name);
}

// By value, unlike clang-tidy's advice: the handler needs a copy, see the header.
void Desktop::Raise(std::function<void()> handler) { // NOLINT(performance-unnecessary-value-param)
    if (handler) {
        Raise([&handler] { handler(); });
    }
}

void Desktop::ReportMissing(const FunctionNotFound& missing) {
    if (reported.insert(missing.function).second) {
        MsgBox(std::string(missing.what()) + ". The program goes on without it.");
    }
}

} // namespace larkspool
