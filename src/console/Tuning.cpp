#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

void Window1::TextFieldFreq_TextChange() {
    SendSetModulation();
    SaveSettingsForMode();
    app.prefs.prefsLastFreq = Val(TextFieldFreq.Text());
    if (CheckBoxNetwork.Value()) {
        SendFrequency(app.prefs.prefsLastFreq * 1000.0);
    }
}

void Window1::StepFrequency(double steps) {
    TextFieldFreq.SetText(Str(Val(TextFieldFreq.Text()) + steps));
}

void Window1::PassbandTextChange() {
    SendSetModulation();
    SaveSettingsForMode();
}

void Window1::StepPassband(TextField& edge, double steps) {
    constexpr double Step = 10; // Hz
    edge.SetText(Str(Val(edge.Text()) + steps * Step));
}

void Window1::TextFieldIdentity_TextChange() { app.prefs.prefsUserName = TextFieldIdentity.Text(); }

void Window1::TextFieldGeoLocation_TextChange() {
    app.prefs.prefsUserQTH = TextFieldGeoLocation.Text();
}

} // namespace larkspool
