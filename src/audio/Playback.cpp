#include "audio/SoundFrame.h"
#include "console/Window1.h"
#include "platform/ByteOrder.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr std::size_t DeviceBlockSize = 1024; // of the record, and of the name
constexpr std::int64_t StartOfStream = -999;  // instead of a number of samples
constexpr double VolumeSteps = 1000.0;

SoundDeviceClass DeviceFromRecord(const MemoryBlock& info, const MemoryBlock& name) {
    SoundDeviceClass device;
    device.id = info.UInt32(0, NativeByteOrder);
    device.numInputChannels = info.UInt32(4, NativeByteOrder);
    device.numOutputChannels = info.UInt32(8, NativeByteOrder);
    device.inputID = info.UInt32(12, NativeByteOrder);
    device.outputID = info.UInt32(16, NativeByteOrder);
    device.variableGain = info.UInt32(20, NativeByteOrder);
    device.name = name.CString(0);
    return device;
}

} // namespace

// Each call into the library is raised as its own event: if the library lacks a function, only that
// call fails and the console continues.
void Window1::InitSoundStuff() {
    desktop.Raise([this] { ReadSoundDevices(); });
    FillSoundOutputPopupMenu();
}

void Window1::ReadSoundDevices() {
    SoundLibrary& library = desktop.Sound();
    const std::int64_t count = library.BuildSoundDeviceList();
    MemoryBlock info(DeviceBlockSize);
    MemoryBlock name(DeviceBlockSize);
    for (std::int64_t i = 0; i < count; ++i) {
        library.GetSoundDeviceInfo(i, info.Data(), reinterpret_cast<char*>(name.Data()));
        soundDevices.push_back(DeviceFromRecord(info, name));
        const SoundDeviceClass& device = soundDevices.back();
        if (device.numInputChannels > 0) {
            soundInputDeviceIDs.push_back(soundDevices.size() - 1);
        }
        if (device.numOutputChannels > 0) {
            soundOutputDeviceIDs.push_back(soundDevices.size() - 1);
        }
    }
}

void Window1::FillSoundOutputPopupMenu() {
    const std::string wanted = app.prefs.defaultSoundOutputDevice;
    SoundOutputPopupMenu.DeleteAllRows();
    int selected = 0;
    for (const std::size_t id : soundOutputDeviceIDs) {
        SoundOutputPopupMenu.AddRow(soundDevices[id].name);
        if (soundDevices[id].name == wanted) {
            selected =
                SoundOutputPopupMenu.ListCount() - 1; // the last one if two devices have this name
        }
    }
    SoundOutputPopupMenu.SetListIndex(selected);
}

void Window1::SetSoundOutputDevice() {
    app.prefs.defaultSoundOutputDevice = SoundOutputPopupMenu.Text();
    desktop.Raise([this] { desktop.Sound().StopSoundOutput(); });
    // The library's index of an output device is the popup's row.
    if (SoundOutputPopupMenu.ListIndex() > -1) {
        desktop.Raise([this] {
            desktop.Sound().StartSoundOutput(SoundOutputPopupMenu.ListIndex(),
                                             OutputVolumeSlider.Value() / VolumeSteps);
        });
    }
}

void Window1::SetOutputVolume(double volume) {
    desktop.Raise([&] { desktop.Sound().SetSoundOutputVolume(4.0 * volume); });
}

void Window1::OutputVolumeSlider_ValueChanged() {
    app.prefs.prefsLastVolume = OutputVolumeSlider.Value();
    SetOutputVolume(OutputVolumeSlider.Value() / VolumeSteps);
}

void Window1::OutputVolumeSlider_MouseWheel(int deltaY) {
    const int direction = app.prefsInvertScrollWheelPolarity ? -1 : 1;
    OutputVolumeSlider.SetValue(OutputVolumeSlider.Value() + direction * deltaY);
}

// One second of silence before the first frame is all the buffering that the program does. After
// that each frame goes to the library when it arrives.
void Window1::PrimeSoundOutputBuffer() {
    constexpr double Seconds = 1.0;
    const std::int64_t size = WholePart(2.0 * audioRate * Seconds);
    if (!IsPossibleRate(audioRate)) {
        return;
    }
    PlaySound(StartOfStream, kiwiSoundSamplesMB.Data());
    PlaySound(size / 2, kiwiSoundSamplesMB.Data());
}

void Window1::PlaySound(std::int64_t count, const void* samples) {
    desktop.Raise([&] { desktop.Sound().OutputSoundBlock(count, samples, WholePart(audioRate)); });
}

} // namespace larkspool
