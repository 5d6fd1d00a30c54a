#include "platform/Listbox.h"
#include "platform/PopupMenu.h"
#include "platform/Slider.h"
#include "platform/TextArea.h"
#include "platform/TextField.h"

#include <gtest/gtest.h>

#include <string>

namespace larkspool {
namespace {

TEST(ControlModels, OnlyADifferentValueInItsRangeRaisesAnEvent) {
    std::string events;
    Slider slider;
    slider.SetRange(-10, 10);
    slider.valueChanged = [&] { events += "slider " + std::to_string(slider.Value()) + ";"; };
    PopupMenu popup;
    popup.change = [&] { events += "popup " + popup.Text() + ";"; };
    popup.AddRow("a");
    for (const int wanted : {99, 0, 0, 50, -1, 7}) {
        slider.SetValue(wanted < 50 ? 10 : wanted);
        popup.SetListIndex(wanted);
    }
    EXPECT_EQ(events, "slider 10;popup a;");
    popup.DeleteAllRows();
    EXPECT_EQ(popup.ListIndex(), -1);
}

TEST(ControlModels, SmallTurnsOfTheWheelAddUpToWholeSteps) {
    TextField field;
    int steps = 0;
    field.Wheel(0, 1200); // no handler takes it
    field.mouseWheel = [&](int, int deltaY) { steps += deltaY; };
    for (int i = 0; i < 30; ++i) {
        field.Wheel(0, 8);
    }
    EXPECT_EQ(steps, 2);
    // The first turn back starts from 0: what was left before doesn't count.
    for (const auto& [turn, expected] : {std::pair{100, 2}, {-60, 2}, {-60, 1}, {-360, -2}}) {
        field.Wheel(0, turn);
        EXPECT_EQ(steps, expected);
    }
}

TEST(ControlModels, WhatGrowsIsBounded) {
    Listbox log;
    log.maximumRows = 3;
    log.maximumRowLength = 4;
    for (const char* row : {"one", "two", "three", "fo\xc3\xb6\xc3\xb6"}) {
        log.AddRow(row);
        log.SetListIndex(1);
    }
    EXPECT_EQ(log.ListIndex(), 1);
    EXPECT_EQ(log.ListCount(), 3);
    EXPECT_EQ(log.Cell(1, 0), "thre");
    EXPECT_EQ(log.Cell(2, 0), "fo\xc3\xb6") << "cut between characters";
    log.AddRow("four");
    EXPECT_EQ(log.ListIndex(), 0) << "the chosen row has moved up";
    TextArea area;
    area.maximumLength = 5;
    area.AppendText("abc");
    area.AppendText("defg");
    EXPECT_EQ(area.Text(), "cdefg");
}

TEST(ControlModels, ATablesCellsAndSelectionFollowItsRows) {
    Listbox table;
    table.columns.resize(3);
    for (const char* row : {"a", "b", "c"}) {
        table.AddRow(row);
    }
    table.SetCell(1, 2, "b2");
    table.SetCell(1, 3, "no such column");
    table.SetCell(9, 0, "no such row");
    table.SetListIndex(1);
    table.DeleteRow(0);
    EXPECT_EQ(table.ListIndex(), 0);
    EXPECT_EQ(table.Cell(0, 0) + table.Cell(0, 1) + table.Cell(0, 2) + table.Cell(0, 3), "bb2");
    table.DeleteRow(0);
    EXPECT_EQ(table.ListIndex(), -1);
    table.DeleteRow(5);
    EXPECT_EQ(table.LastIndex(), 0);
}

} // namespace
} // namespace larkspool
