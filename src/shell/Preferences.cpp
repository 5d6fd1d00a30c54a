#include "shell/Preferences.h"

#include "platform/BinaryStream.h"

#include <cmath>
#include <utility>

namespace larkspool {

namespace {

constexpr std::size_t ReservedBytes = 400;
constexpr std::int32_t DefaultPort = 8073;
constexpr double DefaultFreq = 10000.0; // kHz
constexpr std::int32_t DefaultVolume = 1000;
constexpr std::int32_t DefaultWaterfallGain = 100;
constexpr std::int32_t DefaultWaterfallOffset = 200;

struct Writer {
    BinaryStream& stream;

    void operator()(const std::string& value) const { stream.WritePascalString(value); }
    void operator()(std::int32_t value) const { stream.WriteInt32(value); }
    void operator()(std::uint32_t value) const { stream.WriteUInt32(value); }
    void operator()(double value) const { stream.WriteDouble(value); }
    void operator()(bool value) const { stream.WriteBoolean(value); }
    void Inverted(bool value) const { stream.WriteBoolean(!value); }
};

struct Reader {
    BinaryStream& stream;

    void operator()(std::string& value) const { value = stream.ReadPascalString(); }
    void operator()(std::int32_t& value) const { value = stream.ReadInt32(); }
    void operator()(std::uint32_t& value) const { value = stream.ReadUInt32(); }
    void operator()(double& value) const { value = stream.ReadDouble(); }
    void operator()(bool& value) const { value = stream.ReadBoolean(); }
    void Inverted(bool& value) const { value = !stream.ReadBoolean(); }
};

// Every stored field, in the order of the file. New fields go to the end.
template <typename Field, typename Stored>
void ForEachField(const Field& field, Stored& p) {
    auto& modes = p.prefsModeSettings;
    for (std::size_t i = 0; i < ModeSettingsClass::Count; ++i) {
        field(modes.agc[i]);
        field(modes.decay[i]);
        field(modes.hang[i]);
        field(modes.hiCut[i]);
        field(modes.lowCut[i]);
        field(modes.manualGain[i]);
        field(modes.slope[i]);
        field(modes.threshold[i]);
    }
    field(p.prefsLastURL);
    field(p.prefsLastPort);
    field(p.prefsLastFreq);
    field(p.prefsLastMode);
    field(p.prefsLastVolume);
    field(p.defaultSoundOutputDevice);
    field(p.prefsUserName);
    field(p.prefsUserQTH);
    field(p.prefsWaterfallGain);
    field(p.prefsWaterfallOffset);
    field(p.prefsSquelch);
    field(p.prefsSquelchTime);
    field(p.prefsUseNetworking);
    field(p.prefsReconnect);
    field.Inverted(p.prefsUpdateWaterfall); // the file stores whether it is off
    field(p.prefsSquelchedDeadSpace);
    field(p.noUpdateCheck);
    field(p.lastUpdateCheckVersion);
}

void ReplaceWhatCannotWork(Preferences& p) {
    if (p.prefsLastPort <= 0) {
        p.prefsLastPort = DefaultPort;
    }
    if (!std::isfinite(p.prefsLastFreq) || p.prefsLastFreq <= 0) {
        p.prefsLastFreq = DefaultFreq;
    }
    if (p.prefsWaterfallGain <= 0) {
        p.prefsWaterfallGain = DefaultWaterfallGain;
    }
    if (p.prefsWaterfallOffset <= 0) {
        p.prefsWaterfallOffset = DefaultWaterfallOffset;
    }
}

} // namespace

Preferences DefaultPreferences() {
    Preferences p;
    p.prefsLastPort = DefaultPort;
    p.prefsLastVolume = DefaultVolume;
    p.prefsLastFreq = DefaultFreq;
    p.prefsWaterfallOffset = DefaultWaterfallOffset;
    p.prefsWaterfallGain = DefaultWaterfallGain;
    p.prefsModeSettings.SetDefaults();
    return p;
}

std::string EncodePreferences(const Preferences& preferences) {
    BinaryStream stream;
    stream.WriteString(std::string(ReservedBytes, '\0'));
    ForEachField(Writer{stream}, preferences);
    return stream.TakeBytes();
}

Preferences DecodePreferences(std::string bytes) {
    BinaryStream stream = BinaryStream::FromBytes(std::move(bytes));
    stream.SetPosition(ReservedBytes);
    Preferences preferences;
    ForEachField(Reader{stream}, preferences);
    ReplaceWhatCannotWork(preferences);
    return preferences;
}

} // namespace larkspool
