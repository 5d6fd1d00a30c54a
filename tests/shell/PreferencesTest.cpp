#include "shell/Preferences.h"

#include <gtest/gtest.h>

#include <bit>

namespace larkspool {
namespace {

TEST(PreferencesStore, EveryByteHasItsPlace) {
    Preferences p = DefaultPreferences();
    p.prefsLastURL = "sdr";
    p.prefsLastMode = 3;
    p.prefsUpdateWaterfall = true;
    p.prefsSquelch = -1;
    p.prefsSquelchedDeadSpace = 1.5;
    p.prefsModeSettings.hang[19] = true;
    const std::string bytes = EncodePreferences(p);
    const auto at = [&bytes](std::size_t offset, std::size_t count) {
        return bytes.substr(offset, count);
    };
    EXPECT_EQ(at(0, 400), std::string(400, '\0'));
    // The first mode: AGC, decay 1000, no hang, 5000, -5000, gain 50, slope 6.0, threshold -130.
    EXPECT_EQ(at(400, 30), std::string("\x01\x00\x00\x03\xe8\x00\x00\x00\x13\x88\xff\xff\xec\x78"
                                       "\x00\x00\x00\x32\x40\x18\x00\x00\x00\x00\x00\x00"
                                       "\xff\xff\xff\x7e",
                                       30));
    EXPECT_EQ(at(400 + 19 * 30 + 5, 1), "\x01");
    EXPECT_EQ(at(1000, 4), "\x03sdr");
    EXPECT_EQ(at(1004, 4), std::string("\x00\x00\x1f\x89", 4));                 // port 8073
    EXPECT_EQ(at(1008, 8), std::string("\x40\xc3\x88\x00\x00\x00\x00\x00", 8)); // 10000.0
    EXPECT_EQ(at(1016, 4), std::string("\x00\x00\x00\x03", 4));                 // mode
    EXPECT_EQ(at(1020, 4), std::string("\x00\x00\x03\xe8", 4));                 // volume
    EXPECT_EQ(at(1024, 3), std::string(3, '\0')); // device, name, place
    EXPECT_EQ(at(1027, 4), std::string("\x00\x00\x00\x64", 4));
    EXPECT_EQ(at(1031, 4), std::string("\x00\x00\x00\xc8", 4));
    EXPECT_EQ(at(1035, 4), "\xff\xff\xff\xff");
    EXPECT_EQ(at(1039, 4), std::string(4, '\0'));
    EXPECT_EQ(at(1043, 3), std::string(3, '\0')) << "the waterfall's byte says what is off";
    EXPECT_EQ(at(1046, 8), std::string("\x3f\xf8\x00\x00\x00\x00\x00\x00", 8));
    EXPECT_EQ(bytes.size(), 1046U + 8 + 1 + 4);
}

TEST(PreferencesStore, AFileCutAnywhereStillLoads) {
    Preferences whole = DefaultPreferences();
    whole.prefsLastURL = "sdr.example.net";
    whole.prefsUserQTH = "Turin";
    const std::string bytes = EncodePreferences(whole);
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        const Preferences p = DecodePreferences(bytes.substr(0, cut));
        ASSERT_GT(p.prefsLastPort, 0) << cut;
        ASSERT_GT(p.prefsLastFreq, 0) << cut;
        ASSERT_TRUE(p.prefsLastURL.empty() || p.prefsLastURL == whole.prefsLastURL) << cut;
        ASSERT_TRUE(p.prefsUserQTH.empty() || p.prefsUserQTH == whole.prefsUserQTH) << cut;
    }
    const Preferences empty = DecodePreferences("");
    EXPECT_TRUE(empty.prefsUpdateWaterfall) << "a file without the field has not switched it off";
    EXPECT_EQ(empty.prefsModeSettings.hiCut[3], 0) << "a file supplies all modes, even empty ones";
}

TEST(PreferencesStore, WhatCouldNotWorkIsReplacedAndALongTextCutBetweenCharacters) {
    Preferences p = DefaultPreferences();
    p.prefsUserName = std::string(254, 'n') + "\xc3\xb6 and more";
    p.prefsLastPort = -1;
    p.prefsLastFreq = std::bit_cast<double>(0x7ff8000000000000ULL); // not a number
    p.prefsWaterfallGain = -5;
    p.prefsWaterfallOffset = 0;
    for (const Preferences& back :
         {DecodePreferences(EncodePreferences(p)), DecodePreferences("")}) {
        EXPECT_EQ(back.prefsUserName, std::string(back.prefsUserName.empty() ? 0 : 254, 'n'));
        EXPECT_EQ(back.prefsLastPort, 8073);
        EXPECT_EQ(back.prefsLastFreq, 10000.0);
        EXPECT_EQ(back.prefsWaterfallGain, 100);
        EXPECT_EQ(back.prefsWaterfallOffset, 200);
    }
}

} // namespace
} // namespace larkspool
