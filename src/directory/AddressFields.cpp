#include "console/Window1.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

void Window1::TextFieldAddress_TextChange() {
    if (const auto pasted = ParsePastedUrl(TextFieldAddress.Text())) {
        TextFieldAddress.SetText(pasted->host); // comes through here once more
        TextFieldPort.SetText(pasted->port);
    }
    app.prefs.prefsLastURL = TextFieldAddress.Text();
}

void Window1::TextFieldPort_TextChange() {
    app.prefs.prefsLastPort = WholePart<std::int32_t>(Val(TextFieldPort.Text()));
}

} // namespace larkspool
