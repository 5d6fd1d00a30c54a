#include "platform/qt/Boxes.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

constexpr int IconSize = 48; // points

QString BoxTitle() {
    QString title = QApplication::applicationName();
    return title.isEmpty() ? title : title.left(1).toUpper() + title.mid(1);
}

// Over the window in front, without being its child: the box outlives it.
void PlaceOverFront(QWidget& box) {
    const QWidget* front = QApplication::activeWindow();
    if (front == nullptr || front->windowHandle() == nullptr) {
        return;
    }
    box.winId();
    box.windowHandle()->setTransientParent(front->windowHandle());
    box.adjustSize();
    box.move(front->frameGeometry().center() - box.rect().center());
}

void AddButtons(QMessageBox& box, const MessageDialog& dialog) {
    const auto add = [&box](const std::string& caption, QMessageBox::ButtonRole role) {
        return caption.empty() ? nullptr : box.addButton(QString::fromStdString(caption), role);
    };
    QPushButton* action = add(dialog.actionCaption, QMessageBox::AcceptRole);
    QPushButton* cancel = add(dialog.cancelCaption, QMessageBox::RejectRole);
    if (QPushButton* alternate = add(dialog.alternateCaption, QMessageBox::ActionRole)) {
        alternate->setEnabled(dialog.alternateEnabled);
    }
    if (action != nullptr) {
        box.setDefaultButton(action);
        box.setEscapeButton(cancel != nullptr ? cancel : action);
    }
}

MessageDialog::Answer AnswerOf(const QMessageBox& box) {
    switch (box.buttonRole(box.clickedButton())) {
    case QMessageBox::AcceptRole:
        return MessageDialog::Answer::Action;
    case QMessageBox::ActionRole:
        return MessageDialog::Answer::Alternate;
    default:
        return MessageDialog::Answer::Cancel;
    }
}

// A file type's name such as "text/txt" ends in the suffix of its files.
QString SuffixOf(const std::string& filter) {
    return QString::fromStdString(filter).section(QLatin1Char('/'), -1);
}

void SetUp(QFileDialog& dialog, const std::string& filter,
           const std::optional<std::string>& nameToSave) {
    const QString suffix = SuffixOf(filter);
    dialog.setAcceptMode(nameToSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(nameToSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(
        {QStringLiteral("Files (*.%1)").arg(suffix), QStringLiteral("All files (*)")});
    if (nameToSave) {
        dialog.setDefaultSuffix(suffix);
        dialog.selectFile(QString::fromStdString(*nameToSave));
    }
}

} // namespace

Boxes::Boxes(Desktop& theDesktop) : desktop(theDesktop) {}

Boxes::~Boxes() { CloseAll(); }

void Boxes::CloseAll() {
    for (const OpenBox& box : std::exchange(open, {})) {
        const std::unique_ptr<QWidget> closed(box.widget.data());
    }
}

// If an answer is awaited, a box without a callback doesn't count.
bool Boxes::IsOpen(const QString& text, Answer answer) const {
    return std::any_of(open.begin(), open.end(), [&text, answer](const OpenBox& candidate) {
        const auto* box = qobject_cast<const QMessageBox*>(candidate.widget.data());
        return box != nullptr && box->isVisible() && box->text() == text &&
               (answer == Answer::Unwanted || candidate.answer == Answer::Awaited);
    });
}

void Boxes::Show(std::unique_ptr<QWidget> box, Answer answer) {
    std::erase_if(open, [](const OpenBox& candidate) { return candidate.widget.isNull(); });
    QWidget* shown = box.release(); // deletes itself when it is closed
    shown->setAttribute(Qt::WA_DeleteOnClose);
    open.push_back({shown, answer});
    PlaceOverFront(*shown);
    shown->show();
}

void Boxes::ShowText(const std::string& text) {
    MessageDialog dialog;
    dialog.message = text;
    Ask(dialog, nullptr);
}

void Boxes::Ask(const MessageDialog& dialog, std::function<void(MessageDialog::Answer)> answered) {
    const QString text = QString::fromStdString(dialog.message);
    const Answer answer = answered ? Answer::Awaited : Answer::Unwanted;
    if (IsOpen(text, answer)) {
        return;
    }
    auto box = std::make_unique<QMessageBox>();
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    const double ratio = box->devicePixelRatioF();
    box->setWindowTitle(BoxTitle());
    box->setIconPixmap(QApplication::windowIcon().pixmap(QSize(IconSize, IconSize), ratio));
    AddButtons(*box, dialog);
    if (answered) {
        QObject::connect(box.get(), &QDialog::finished, box.get(),
                         [this, shown = box.get(), handler = std::move(answered)] {
                             const auto given = AnswerOf(*shown);
                             desktop.Raise([&handler, given] { handler(given); });
                         });
    }
    Show(std::move(box), answer);
}

void Boxes::AskForFile(const std::string& filter, const std::optional<std::string>& nameToSave,
                       std::function<void(std::optional<FolderItem>)> chosen) {
    auto dialog = std::make_unique<QFileDialog>(
        nullptr, QString(), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    SetUp(*dialog, filter, nameToSave);
    dialog->setModal(true); // as message boxes are: the window that asks must stay open meanwhile
    QObject::connect(dialog.get(), &QDialog::finished, dialog.get(),
                     [this, shown = dialog.get(), handler = std::move(chosen)](int result) {
                         std::optional<FolderItem> file;
                         if (result == QDialog::Accepted && !shown->selectedFiles().isEmpty()) {
                             file.emplace(shown->selectedFiles().front().toStdString());
                         }
                         desktop.Raise([&handler, &file] { handler(file); });
                     });
    Show(std::move(dialog), Answer::Awaited);
}

} // namespace larkspool
