#include "qt/OnScreen.h"

#include "platform/Listbox.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

#include <string>

namespace larkspool {
namespace {

class ListboxView : public testing::Test {
  protected:
    ListboxView() {
        list.hasHeader = true;
        list.columns = {{"Receiver", 0, 2, true}, {"Days", 80, 0, true}, {"Hidden", 0, 0, false}};
        for (const char* row : {"a", "b", "c"}) {
            list.AddRow(row);
        }
        window.Add(list, "List", {0, 0, 600, 300}, {true, true, true, true});
    }

    void Open() {
        window.Open();
        table = &window.Find<QTableView>("List");
    }

    void Click(int row, int column) const {
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, CenterOf(row, column));
    }

    QLineEdit& OpenEdit(int row, int column) const {
        Click(row, column);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, CenterOf(row, column));
        return *table->viewport()->findChild<QLineEdit*>();
    }

    QPoint CenterOf(int row, int column) const {
        return table->visualRect(table->model()->index(row, column)).center();
    }

    QModelIndexList Chosen() const {
        LetEventsRun();
        return table->selectionModel()->selectedRows();
    }

    Listbox list;
    TestWindow window;
    QTableView* table = nullptr;
};

TEST_F(ListboxView, ACellIsEditedInPlaceWhileTheProgramGoesOn) {
    list.SetCell(0, 1, "\xff");
    Open();
    OpenEdit(0, 1);
    list.CommitEdit();
    LetEventsRun(); // the edit goes
    EXPECT_EQ(list.Cell(0, 1), "\xff") << "bytes that can't be shown, and were not changed";
    QLineEdit& edit = OpenEdit(0, 1);
    edit.selectAll();
    QTest::keyClicks(&edit, "mo");
    list.SetCell(0, 2, "running");
    list.AddRow("d");
    LetEventsRun();
    QTest::keyClicks(&edit, "n");
    EXPECT_EQ(list.Cell(0, 1), "\xff");
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_TRUE(Eventually([this] { return list.Cell(0, 1) == "mon"; }));
    EXPECT_EQ(list.Cell(0, 0), "a");
    Click(2, 0);
    QTest::keyClicks(table->viewport(), "x"); // typing alone opens an edit
    list.CommitEdit();
    EXPECT_EQ(list.Cell(2, 0), "x");
    EXPECT_EQ(table->model()->rowCount(), 4);
}

TEST_F(ListboxView, TheChosenRowIsTheSameOnBothSides) {
    Open();
    Click(1, 0);
    EXPECT_EQ(list.ListIndex(), 1);
    list.SetListIndex(2);
    EXPECT_EQ(Chosen().front().row(), 2);
    list.DeleteRow(0);
    EXPECT_EQ(Chosen().front().row(), 1);
    EXPECT_EQ(list.ListIndex(), 1);
    list.DeleteAllRows();
    EXPECT_TRUE(Chosen().isEmpty());
}

TEST_F(ListboxView, ColumnsShareTheWidthAndTheHiddenOneHasNone) {
    Open();
    window.Resize(900, 300);
    LetEventsRun();
    EXPECT_TRUE(table->isColumnHidden(2));
    EXPECT_EQ(table->columnWidth(1), 80);
    EXPECT_EQ(table->columnWidth(0), table->viewport()->width() - 80);
    EXPECT_FALSE(table->horizontalHeader()->isHidden());
}

TEST_F(ListboxView, AHiddenListTakesManyRowsForNothing) {
    Open();
    list.SetVisible(false);
    LetEventsRun();
    for (int row = 0; row < 2000; ++row) {
        list.AddRow("row " + std::to_string(row));
    }
    LetEventsRun();
    EXPECT_EQ(table->model()->rowCount(), 3);
    list.SetVisible(true);
    EXPECT_EQ(table->model()->rowCount(), 2003);
}

} // namespace
} // namespace larkspool
