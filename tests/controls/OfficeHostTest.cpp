#include "controls/OfficeHost.h"

#include "office/SpreadsheetApplication.h"
#include "session/ErrorSink.h"
#include "session/Strings.h"
#include "support/TestSession.h"

#include <QFile>

namespace tessaro {

namespace {

using OfficeHostWithoutX11 = test::SessionTest;

} // namespace

// These tests draw off screen, where no other program's window can be taken in.
TEST_F(OfficeHostWithoutX11, SaysThatItCanNotShowAndWhereTheFileIs) {
    StartInstallation();
    OfficeHost host;
    ASSERT_FALSE(OfficeHost::CanHost());
    const QString file = QStringLiteral("/tmp/Some report.xls");
    for (const bool slides : {false, true}) {
        EXPECT_FALSE(slides ? host.ShowSlides(file) : host.ShowWorkbook(file));
        EXPECT_TRUE(host.ErrorText().contains(file)) << host.ErrorText().toStdString();
        EXPECT_EQ(host.accessibleDescription(), host.ErrorText());
        EXPECT_FALSE(host.IsOpen());
    }
    EXPECT_FALSE(office::SpreadsheetApplication::Hosted().IsRunning());
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("OpenHostedExcel"));
    // Nothing of what follows an opening does harm.
    host.SetToolBars(true);
    EXPECT_FALSE(host.SetPrintPreview(true));
    EXPECT_FALSE(host.Save());
    host.resize(300, 200);
    host.CloseHostedExcel();
}

} // namespace tessaro
