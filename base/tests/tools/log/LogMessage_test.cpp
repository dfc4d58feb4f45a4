// LogMessage_test.cpp: a message's size and level word, copies that take the attachment,
// and messages the pool hands out again looking new without touching text others hold.
#include "orv/LogAttachment.h"
#include "orv/LogMessage.h"

#include "support/Test.h"

#include <memory>

using namespace orv;

TEST(LogMessage, SizeCountsTwoBytesPerCharacterAndTheAttachment) {
    EXPECT_EQ(LogMessageString(QString("abc")).getSize(), 48u);
    EXPECT_EQ(LogMessageString("a$c", 'b').getSize(), 48u);
    EXPECT_EQ(LogMessageString().getSize(), 42u);
    EXPECT_EQ(LogMessageString("$", nullptr).toString(), "nullptr");
    LogMessageString msg("m");
    msg.attach(new LogAttachment(QByteArray(10, 'x')));
    EXPECT_EQ(msg.getSize(), 32u + 10u + 10u + 2u);
    EXPECT_FALSE(LogAttachment().hasMimeType());
}

TEST(LogMessage, LevelWordCarriesTheLibraryIdAndCopiesTakeAll) {
    LogMessageString msg("m");
    EXPECT_EQ(msg.getLogLevel(), unsigned(DEBUG));
    msg.setLogLevel(ERROR | TEST);
    EXPECT_EQ(msg.getLogLevel(), 0x640044u);
    EXPECT_EQ(msg.getLibIdentifier(), 100u);
    EXPECT_TRUE(msg.isError() && msg.isTest());
    EXPECT_FALSE(msg.isFatal() || msg.isDebug() || msg.isQuitMessage());

    msg.setSpace(4);
    msg.setNumber(17);
    msg.attach(new LogAttachment(QByteArray(10, 'x')));
    std::unique_ptr<LogMessage> copy(msg.createCopy());
    EXPECT_EQ(copy->toString(), "m");
    EXPECT_EQ(copy->getLogLevel(), 0x640044u);
    EXPECT_EQ(copy->getSpace(), 4u);
    EXPECT_EQ(copy->getNumber(), 17u);
    EXPECT_EQ(copy->getTime().getMicroseconds(), msg.getTime().getMicroseconds());
    // The copy takes the attachment over.
    EXPECT_FALSE(msg.hasAttachment());
    ASSERT_TRUE(copy->hasAttachment());
    std::unique_ptr<LogAttachment> taken(copy->detach());
    EXPECT_EQ(taken->length(), 10u);
    EXPECT_FALSE(copy->hasAttachment());

    LogMessageString other("o");
    other.assign(&msg);
    EXPECT_EQ(other.getLogLevel(), 0x640044u);
    EXPECT_EQ(other.getNumber(), 17u);
    EXPECT_EQ(other.toString(), "o");
    std::unique_ptr<LogMessage> quit(LogMessageQuit().createCopy());
    EXPECT_TRUE(quit->isQuitMessage());
    EXPECT_EQ(quit->toString(), "QUIT");
}

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
    EXPECT_EQ(formatted->toString(), "x=1.500000 nullptr");

    // Other kinds are freed, not reused (the sanitizer builds see a leak or a double
    // free otherwise): the plain message stays the next one handed out.
    LogMessageString::recycle(formatted);
    LogMessageString::recycle(nullptr);
    LogMessageString::recycle(new LogMessageQuit());
    LogMessageString *next = LogMessageString::obtain();
    EXPECT_EQ(next, formatted);
    EXPECT_FALSE(next->isQuitMessage());
    delete next;
}
