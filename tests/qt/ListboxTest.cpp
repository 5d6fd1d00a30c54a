#include "qt/OnScreen.h"

#include "platform/Listbox.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

#include <gtest/gtest.h>

#include <string>

namespace larkspool {
namespace {

class ListboxView : public testing::Test {
  protected:
    void SetUp() override {
        window.SetTitle("List");
        list.Place("List", {0, 0, 600, 300}, {true, true, true, true});
        list.hasHeader = true;
        list.columns = {{"Receiver", 0, 2, true}, {"Days", 80, 0, true}, {"Hidden", 0, 0, false}};
        for (const char* row : {"a", "b", "c"}) {
            list.AddRow(row);
        }
        window.AddControl(list);
    }

    QTableView& Open() {
        window.Open();
        return window.Find<QTableView>("List");
    }

    static QPoint CentreOf(const QTableView& table, int row, int column) {
        return table.visualRect(table.model()->index(row, column)).center();
    }

    static QLineEdit* OpenEdit(QTableView& table, int row, int column) {
        const QPoint cell = CentreOf(table, row, column);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, cell);
        return table.viewport()->findChild<QLineEdit*>();
    }

    Listbox list;
    TestWindow window;
};

TEST_F(ListboxView, ACellIsEditedInPlace) {
    list.SetCell(1, 1, "\xff");
    auto& table = Open();
    ASSERT_NE(OpenEdit(table, 1, 1), nullptr);
    list.CommitEdit();
    LetEventsRun(); // the edit goes
    EXPECT_EQ(list.Cell(1, 1), "\xff") << "bytes that can't be shown, and were not changed";
    QLineEdit* edit = OpenEdit(table, 1, 1);
    ASSERT_NE(edit, nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, "mon");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_TRUE(Eventually([this] { return list.Cell(1, 1) == "mon"; }));
    EXPECT_EQ(list.Cell(1, 0), "b");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, CentreOf(table, 2, 0));
    QTest::keyClicks(table.viewport(), "x"); // typing alone opens an edit
    list.CommitEdit();
    EXPECT_EQ(list.Cell(2, 0), "x");
}

TEST_F(ListboxView, AnOpenEditSurvivesTheProgramAndIsKeptWhenAsked) {
    auto& table = Open();
    QLineEdit* edit = OpenEdit(table, 0, 1);
    ASSERT_NE(edit, nullptr);
    QTest::keyClicks(edit, "tu");
    list.SetCell(0, 2, "running");
    list.AddRow("d");
    LetEventsRun();
    QTest::keyClicks(edit, "e");
    EXPECT_EQ(list.Cell(0, 1), "");
    list.CommitEdit();
    EXPECT_EQ(list.Cell(0, 1), "tue");
    EXPECT_EQ(table.model()->rowCount(), 4);
}

TEST_F(ListboxView, TheChosenRowIsTheSameOnBothSides) {
    auto& table = Open();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, CentreOf(table, 1, 0));
    EXPECT_EQ(list.ListIndex(), 1);
    list.SetListIndex(2);
    EXPECT_EQ(table.selectionModel()->selectedRows().front().row(), 2);
    list.DeleteRow(0);
    LetEventsRun();
    EXPECT_EQ(table.selectionModel()->selectedRows().front().row(), 1);
    EXPECT_EQ(list.ListIndex(), 1);
    list.DeleteAllRows();
    LetEventsRun();
    EXPECT_TRUE(table.selectionModel()->selectedRows().isEmpty());
}

TEST_F(ListboxView, ColumnsShareTheWidthAndTheHiddenOneHasNone) {
    auto& table = Open();
    EXPECT_TRUE(table.isColumnHidden(2));
    EXPECT_EQ(table.columnWidth(1), 80);
    EXPECT_EQ(table.columnWidth(0), table.viewport()->width() - 80);
    window.Resize(900, 300);
    LetEventsRun();
    EXPECT_EQ(table.columnWidth(0), table.viewport()->width() - 80);
    EXPECT_FALSE(table.horizontalHeader()->isHidden());
}

TEST_F(ListboxView, TheContextMenuOffersAndDoesWhatTheProgramSays) {
    int done = 0;
    list.constructContextualMenu = [this](std::vector<MenuItem>& items) {
        items.push_back({"", "Delete entry", "", MenuRole::Ordinary, 2, list.ListIndex()});
        return true;
    };
    list.contextualMenuAction = [&done, this](const MenuItem& item) {
        done = item.index;
        list.DeleteRow(item.tag.value_or(-1));
        return true;
    };
    auto& table = Open();
    list.SetListIndex(1);
    table.customContextMenuRequested(CentreOf(table, 1, 0));
    auto* menu = table.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    menu->actions().front()->trigger();
    EXPECT_EQ(done, 2);
    EXPECT_EQ(list.ListCount(), 2);
    menu->close();
}

TEST_F(ListboxView, AHiddenListTakesManyRowsForNothing) {
    list.SetVisible(false);
    list.maximumRows = 2000;
    auto& table = Open();
    for (int row = 0; row < 10000; ++row) {
        list.AddRow("row " + std::to_string(row));
    }
    LetEventsRun();
    EXPECT_EQ(table.model()->rowCount(), 0);
    list.SetVisible(true);
    EXPECT_EQ(table.model()->rowCount(), 2000);
    EXPECT_EQ(table.model()->index(1999, 0).data().toString(), "row 9999");
}

} // namespace
} // namespace larkspool
