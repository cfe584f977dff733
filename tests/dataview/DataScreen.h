#pragma once

#include "dataview/frmData.h"
#include "session/Session.h"
#include "support/SelectionTest.h"

#include <QApplication>
#include <QTest>

namespace tessaro::test {

/// The data view as a form of its own, on the rows that a test has filled in.
class DataScreenTest : public SelectionTest {
  protected:
    void Show() {
        form.resize(1280, 600);
        form.show();
        QApplication::processEvents(); // before, so that the timer's next page can't come however slow the drawing is
        SelectionChanged = true;
        form.Enter();
    }
    void WaitForAll() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return form.paging().PagingComplete(); }, 10000));
    }
    void ShowAll() {
        Show();
        WaitForAll();
    }

    frmData form;
};

} // namespace tessaro::test
