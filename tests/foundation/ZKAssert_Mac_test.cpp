#include "ZKAssert.h"
#include "ZKAssert_Mac.h"

#include "ZKTestSupport.h"

#include <gtest/gtest.h>

namespace {

bool s_inAssertSeenByHandler = false;

} // namespace

TEST(ZKAssert_Mac, EmitsOneDebugMessageWithTheFixedContext) {
    s_inAssertSeenByHandler = false;
    QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {
            s_inAssertSeenByHandler = ZKAssert_Mac::s_inAssert;
        });
    ZKAssert_Mac::showAssert("checked", nullptr, 0);
    qInstallMessageHandler(previous);
    EXPECT_TRUE(s_inAssertSeenByHandler); // true only while emitting
    EXPECT_FALSE(ZKAssert_Mac::s_inAssert);

    ZKQtMessageCapture capture;
    ZKAssert_Mac::showAssert("Index out of range", "caller.cpp", 12);
    // Kept: the message is handed over as the format, so "%%" is one percent sign.
    ZKAssert_Mac::showAssert("100%% sure", nullptr, 0);
    ASSERT_EQ(capture.messages().size(), 2u);
    const auto& m = capture.messages()[0];
    EXPECT_EQ(m.type, QtDebugMsg);
    EXPECT_EQ(m.text, "Index out of range");
    EXPECT_EQ(m.file, "utils/native/mac/ZKAssert_Mac"); // not the caller's file
    EXPECT_EQ(m.line, 45);
    EXPECT_EQ(m.function, "static void ZKAssert_Mac::showAssert(const char *, const char *, int)");
    EXPECT_EQ(m.category, "default");
    EXPECT_EQ(capture.messages()[1].text, "100% sure");
    // The application's counter is left alone.
    EXPECT_EQ(ZKAssertClass::s_inZKAssertCount, 0);
}

TEST(ZKAssert_Mac, IgnoreListIsComparedWithoutCase) {
    struct Guard {
        ~Guard() { ZKAssert_Mac::s_messagesToIgnore.clear(); }
    } guard;
    ZKAssert_Mac::s_messagesToIgnore.push_back("Index out of range");
    ZKQtMessageCapture capture;
    ZKAssert_Mac::showAssert("INDEX OUT OF RANGE", __FILE__, __LINE__);
    ZKAssert_Mac::showAssert("Index out of range!", __FILE__, __LINE__);
    // Null and empty messages are not checked against the list...
    ZKAssert_Mac::showAssert(nullptr, nullptr, 0);
    ZKAssert_Mac::showAssert("", nullptr, 0);
    ASSERT_EQ(capture.messages().size(), 3u);
    EXPECT_EQ(capture.messages()[0].text, "Index out of range!");
    EXPECT_EQ(capture.messages()[1].text, "");
    EXPECT_EQ(capture.messages()[2].text, "");
    // ...but an empty entry silences the empty message only.
    ZKAssert_Mac::s_messagesToIgnore.push_back("");
    ZKAssert_Mac::showAssert("", nullptr, 0);
    ZKAssert_Mac::showAssert(nullptr, nullptr, 0);
    EXPECT_EQ(capture.messages().size(), 4u);
}
