#pragma once

#include "platform/Desktop.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QMessageBox;

namespace larkspool {

// Message boxes and file dialogs. None blocks the event loop: each is shown, and its callback is
// called when the user has closed it. Owned by the desktop.
class Boxes {
  public:
    explicit Boxes(Desktop& theDesktop);
    ~Boxes();

    void ShowText(const std::string& text);
    void Ask(const MessageDialog& dialog, std::function<void(MessageDialog::Answer)> answered);
    // Asks for a file to write if it has a name to save as, otherwise for one to read.
    void AskForFile(const std::string& filter, const std::optional<std::string>& nameToSave,
                    std::function<void(std::optional<FolderItem>)> chosen);
    void CloseAll(); // without any callback

  private:
    enum class Answer { Awaited, Unwanted };

    struct OpenBox {
        QPointer<QWidget> widget; // null after it is closed: it deletes itself
        Answer answer;
    };

    bool IsOpen(const QString& text, Answer answer) const;
    void Show(std::unique_ptr<QWidget> box, Answer answer);

    Desktop& desktop;
    std::vector<OpenBox> open;
};

} // namespace larkspool
