#include "session/Query.h"

#include "platform/Files.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "support/TestSession.h"

namespace tessaro::test {
namespace {

using QueryTest = SessionTest;

TEST_F(QueryTest, WithoutAConnectionNothingRunsAndNothingBreaks) {
    EXPECT_FALSE(Execute("DELETE * FROM _SelArea"));
    Records rows = Select("SELECT * FROM _SelArea");
    EXPECT_FALSE(rows.isOpen());
    EXPECT_TRUE(rows.atEnd());
    EXPECT_TRUE(rows.isEmpty());
    EXPECT_EQ(rows.Joined(), QString());
}

TEST_F(QueryTest, ConnectsOnlyToDatabases) {
    EXPECT_EQ(CreateTheConnection("   "), nullptr);
    EXPECT_EQ(CreateTheConnection("/no/such/file.mdb"), nullptr);
    const QString text = Folder() + "/text.mdb";
    ASSERT_TRUE(ReplaceFile(text, "this is no database, only some text that is long enough to be read as one"));
    EXPECT_EQ(CreateTheConnection(text), nullptr);
    EXPECT_TRUE(ConnectionText.contains(text));
    EXPECT_FALSE(ConnectionText.contains(QString::fromStdString(DatabasePassword())));
}

TEST_F(QueryTest, EachCallMakesAConnectionOfItsOwn) {
    ASSERT_TRUE(OpenSample());
    const auto one = CreateTheConnection(CurrentDatabase);
    const auto two = CreateTheConnection(CurrentDatabase);
    EXPECT_NE(one, two);
    EXPECT_EQ(Select("SELECT LanguageCode FROM [Language] ORDER BY LanguageCode", jet::CursorType::Static, one.get())
                  .Joined("+"),
              QString("en+fr"));
}

TEST(QuoteDoubledTest, MakesTextSafe) {
    struct {
        QString text, safe;
    } const cases[] = {{"Côte d'Ivoire", "Côte d''Ivoire"},
                       {"  x ", "x"},
                       {"''", "''''"},
                       {QString("a%1b").arg(QChar(0)), "ab"},
                       {{}, ""}};
    for (const auto& c : cases)
        EXPECT_EQ(QuoteDoubled(c.text), c.safe);
    EXPECT_EQ(QuotedList({"a", "O'Neil ", "b,c"}), QString("'a','O''Neil','b,c'"));
    EXPECT_EQ(QuotedList({}), QString());
}

TEST_F(QueryTest, AMessageGivesTheCodeOfItsButton) {
    StartSample();
    answers = {MessageCode::Yes};
    EXPECT_EQ(ShowMessage("034", MessageType::YesNo, MessageIcon::Question), MessageCode::Yes);
    EXPECT_EQ(ShowMessage("034", MessageType::YesNo, MessageIcon::Question), MessageCode::No); // closing the box
    Message shown;
    SetMessageAnswerer([&](const Message& message) {
        shown = message;
        return 0;
    });
    ShowMessage("316", MessageType::Ok, MessageIcon::Refused);
    EXPECT_EQ(shown.text, QString("The file is no data database."));
    EXPECT_EQ(shown.title, QString("Sample"));
    EXPECT_EQ(shown.icon, MessageIcon::Refused);
    ShowMessage("as it stands", MessageType::Ok, MessageIcon::Warning, "Title", false);
    EXPECT_EQ(shown.text, QString("as it stands"));
    EXPECT_TRUE(shown.key.isEmpty());
}

} // namespace
} // namespace tessaro::test
