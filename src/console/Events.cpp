// Connects every control's events to the methods that handle them.
#include "console/Window1.h"
#include "shell/App.h"

namespace larkspool {

void Window1::BindEvents() {
    BindConnectionEvents();
    BindTuningEvents();
    BindGainEvents();
    BindSoundEvents();
    BindWaterfallEvents();
    BindNetworkEvents();
    PushButtonClearListbox.action = [this] { Listbox1.DeleteAllRows(); };
}

void Window1::BindConnectionEvents() {
    PushButtonConnect.action = [this] { PushButtonConnect_Action(); };
    PushButtonDisconnect.action = [this] { PushButtonDisconnect_Action(); };
    CheckBoxReconnect.action = [this] { CheckBoxReconnect_Action(); };
    TextFieldAddress.textChange = [this] { TextFieldAddress_TextChange(); };
    TextFieldPort.textChange = [this] { TextFieldPort_TextChange(); };
    for (TextField* field : {&TextFieldAddress, &TextFieldPort}) {
        field->returnPressed = [this] { PushButtonConnect.Push(); };
    }
    PopupMenuKiwiList.mouseDown = [this] { PopupMenuKiwiList_MouseDown(); };
    PopupMenuKiwiList.change = [this] { PopupMenuKiwiList_Change(); };
    TextFieldIdentity.textChange = [this] { TextFieldIdentity_TextChange(); };
    TextFieldGeoLocation.textChange = [this] { TextFieldGeoLocation_TextChange(); };
    for (const LinkKind kind : {LinkKind::Audio, LinkKind::Waterfall}) {
        SocketOf(kind).connected = [this, kind] { TCPSocket_Connected(kind); };
        SocketOf(kind).dataAvailable = [this, kind] { TCPSocket_DataAvailable(kind); };
    }
    TCPSocketAudio->error = [this] { TCPSocketAudio_Error(); };
    TCPSocketWaterfall->error = [this] { TCPSocketWaterfall_Error(); };
    Timer1->action = [this] { Timer1_Action(); };
    Timer3->action = [this] { Timer3_Action(); };
}

void Window1::BindTuningEvents() {
    PopupMenuMode.change = [this] { PopupMenuMode_Change(); };
    TextFieldFreq.textChange = [this] { TextFieldFreq_TextChange(); };
    TextFieldFreq.mouseWheel = [this](int, int deltaY) { StepFrequency(deltaY); };
    TextFieldFreq.keySteps = [this](double steps) { StepFrequency(steps); };
    for (TextField* edge : {&TextFieldLowCut, &TextFieldHighCut}) {
        edge->textChange = [this] { PassbandTextChange(); };
        edge->mouseWheel = [edge](int, int deltaY) { StepPassband(*edge, deltaY); };
        edge->keySteps = [edge](double steps) { StepPassband(*edge, steps); };
    }
}

void Window1::BindGainEvents() {
    for (CheckBox* box : {&CheckBoxAgc, &CheckBoxHang}) {
        box->action = [this] { AgcChanged(); };
    }
    for (Slider* slider :
         {&SliderAgcThreshold, &SliderAgcSlope, &SliderAgcDecay, &SliderAgcManualGain}) {
        slider->valueChanged = [this] { AgcChanged(); };
    }
    SliderSquelch.valueChanged = [this] { SliderSquelch_ValueChanged(); };
    PopupMenuSquelchTime.change = [this] { PopupMenuSquelchTime_Change(); };
    PopupMenuDeEmphasis.change = [this] { PopupMenuDeEmphasis_Change(); };
}

void Window1::BindSoundEvents() {
    SoundOutputPopupMenu.change = [this] { SetSoundOutputDevice(); };
    SoundOutputPopupMenu.mouseEnter = [this] { app.MyShowToolTip("Output sound device to use"); };
    SoundOutputPopupMenu.mouseExit = [this] { desktop.HideToolTip(); };
    OutputVolumeSlider.valueChanged = [this] { OutputVolumeSlider_ValueChanged(); };
    OutputVolumeSlider.mouseWheel = [this](int, int deltaY) {
        OutputVolumeSlider_MouseWheel(deltaY);
    };
    OutputVolumeSlider.mouseEnter = [this] { app.MyShowToolTip("Output sound volume"); };
    OutputVolumeSlider.mouseExit = [this] { desktop.HideToolTip(); };
    PushButtonRecord.action = [this] { PushButtonRecord_Action(); };
    TextFieldSquelchedDeadSpace.textChange = [this] { TextFieldSquelchedDeadSpace_TextChange(); };
}

void Window1::BindNetworkEvents() {
    CheckBoxNetwork.action = [this] { CheckBoxNetwork_Action(CheckBoxNetwork); };
    RxUDPSocket->dataAvailable = [this] { RxUDPSocket_DataAvailable(*RxUDPSocket); };
    Timer4->action = [this] { Timer4_Action(); };
}

void Window1::BindWaterfallEvents() {
    SliderWaterfallGain.valueChanged = [this] { SliderWaterfallGain_ValueChanged(); };
    SliderWaterfallMinDb.valueChanged = [this] { SliderWaterfallMinDb_ValueChanged(); };
    CheckBoxUpdateWaterfall.action = [this] { CheckBoxUpdateWaterfall_Action(); };
    WaterfallCanvas.mouseDown = [this](int x, int) { return WaterfallCanvas_MouseDown(x); };
}

} // namespace larkspool
