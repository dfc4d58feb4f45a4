// LogMessagePool_test.cpp: a message the logger is done with and that is handed out
// again must look like a new one, and must not touch text others still hold.
#include "orv/LogAttachment.h"
#include "orv/LogMessage.h"

#include <gtest/gtest.h>

using namespace orv;

TEST(LogMessagePool, RecycledMessageKeepsNoTraceOfItsLastUse) {
    LogMessageString *used = LogMessageString::create("request $ of $", 7, "pool");
    used->attach(new LogAttachment(QByteArray("bytes")));
    used->setNumber(77);
    used->setSpace(4);
    used->setLogLevel(ERROR);
    QString const heldElsewhere = used->toString();
    LogMessageString::recycle(used);

    OrvTime const beforeObtain(true);
    LogMessageString *again = LogMessageString::obtain();
    // On one thread the message given back last is the first handed out.
    ASSERT_EQ(again, used);
    EXPECT_EQ(again->toString(), QString());
    EXPECT_FALSE(again->hasAttachment());
    EXPECT_EQ(again->getNumber(), 0u);
    EXPECT_EQ(again->getSpace(), 0u);
    EXPECT_EQ(again->getLogLevel(), static_cast<unsigned int>(DEBUG));
    EXPECT_GE(again->getTime().getMicroseconds(), beforeObtain.getMicroseconds());
    EXPECT_EQ(heldElsewhere, QStringLiteral("request 7 of pool"));

    LogMessageString::recycle(again);
    LogMessageString *formatted = LogMessageString::create("x=$ $", 1.5, nullptr);
    EXPECT_EQ(formatted->toString(), xprintF("x=$ $", 1.5, nullptr));
    LogMessageString::recycle(formatted);
}

TEST(LogMessagePool, OtherMessageKindsAreFreedNotReused) {
    LogMessageString::recycle(nullptr);
    LogMessageString *plain = LogMessageString::obtain();
    LogMessageString::recycle(plain);
    // The quit message is deleted (the sanitizer builds see a leak or a double free
    // otherwise), and the plain message stays the next one handed out.
    LogMessageString::recycle(new LogMessageQuit());
    LogMessageString *next = LogMessageString::obtain();
    EXPECT_EQ(next, plain);
    EXPECT_FALSE(next->isQuitMessage());
    delete next;
}
