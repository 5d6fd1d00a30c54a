#include "shell/Preferences.h"

#include "platform/BinaryStream.h"

#include <cmath>
#include <utility>

namespace larkspool {

namespace {

constexpr int ReservedWords = 100;
constexpr std::int32_t DefaultPort = 8073;
constexpr double DefaultFreq = 10000.0; // kHz
constexpr std::int32_t DefaultVolume = 1000;
constexpr std::int32_t DefaultWaterfallGain = 100;
constexpr std::int32_t DefaultWaterfallOffset = 200;

void WriteModes(BinaryStream& stream, const ModeSettingsClass& modes) {
    for (std::size_t i = 0; i < ModeSettingsClass::Count; ++i) {
        stream.WriteBoolean(modes.agc[i]);
        stream.WriteInt32(modes.decay[i]);
        stream.WriteBoolean(modes.hang[i]);
        stream.WriteInt32(modes.hiCut[i]);
        stream.WriteInt32(modes.lowCut[i]);
        stream.WriteInt32(modes.manualGain[i]);
        stream.WriteDouble(modes.slope[i]);
        stream.WriteInt32(modes.threshold[i]);
    }
}

void ReadModes(BinaryStream& stream, ModeSettingsClass& modes) {
    for (std::size_t i = 0; i < ModeSettingsClass::Count; ++i) {
        modes.agc[i] = stream.ReadBoolean();
        modes.decay[i] = stream.ReadInt32();
        modes.hang[i] = stream.ReadBoolean();
        modes.hiCut[i] = stream.ReadInt32();
        modes.lowCut[i] = stream.ReadInt32();
        modes.manualGain[i] = stream.ReadInt32();
        modes.slope[i] = stream.ReadDouble();
        modes.threshold[i] = stream.ReadInt32();
    }
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

std::string EncodePreferences(const Preferences& p) {
    BinaryStream stream;
    for (int i = 0; i < ReservedWords; ++i) {
        stream.WriteInt32(0);
    }
    WriteModes(stream, p.prefsModeSettings);
    stream.WritePascalString(p.prefsLastURL);
    stream.WriteInt32(p.prefsLastPort);
    stream.WriteDouble(p.prefsLastFreq);
    stream.WriteUInt32(p.prefsLastMode);
    stream.WriteInt32(p.prefsLastVolume);
    stream.WritePascalString(p.defaultSoundOutputDevice);
    stream.WritePascalString(p.prefsUserName);
    stream.WritePascalString(p.prefsUserQTH);
    stream.WriteInt32(p.prefsWaterfallGain);
    stream.WriteInt32(p.prefsWaterfallOffset);
    stream.WriteInt32(p.prefsSquelch);
    stream.WriteInt32(p.prefsSquelchTime);
    stream.WriteBoolean(p.prefsUseNetworking);
    stream.WriteBoolean(p.prefsReconnect);
    stream.WriteBoolean(!p.prefsUpdateWaterfall); // the file says what is off
    stream.WriteDouble(p.prefsSquelchedDeadSpace);
    stream.WriteBoolean(p.noUpdateCheck);
    stream.WriteUInt32(p.lastUpdateCheckVersion);
    return stream.TakeBytes();
}

Preferences DecodePreferences(std::string bytes) {
    BinaryStream stream = BinaryStream::FromBytes(std::move(bytes));
    Preferences p;
    for (int i = 0; i < ReservedWords; ++i) {
        stream.ReadInt32();
    }
    ReadModes(stream, p.prefsModeSettings);
    p.prefsLastURL = stream.ReadPascalString();
    p.prefsLastPort = stream.ReadInt32();
    p.prefsLastFreq = stream.ReadDouble();
    p.prefsLastMode = stream.ReadUInt32();
    p.prefsLastVolume = stream.ReadInt32();
    p.defaultSoundOutputDevice = stream.ReadPascalString();
    p.prefsUserName = stream.ReadPascalString();
    p.prefsUserQTH = stream.ReadPascalString();
    p.prefsWaterfallGain = stream.ReadInt32();
    p.prefsWaterfallOffset = stream.ReadInt32();
    p.prefsSquelch = stream.ReadInt32();
    p.prefsSquelchTime = stream.ReadInt32();
    p.prefsUseNetworking = stream.ReadBoolean();
    p.prefsReconnect = stream.ReadBoolean();
    p.prefsUpdateWaterfall = !stream.ReadBoolean();
    p.prefsSquelchedDeadSpace = stream.ReadDouble();
    ReplaceWhatCannotWork(p);
    p.noUpdateCheck = stream.ReadBoolean();
    p.lastUpdateCheckVersion = stream.ReadUInt32();
    return p;
}

} // namespace larkspool
