// LogAttachment_test.cpp: a block handed to the logger with a message; how the console
// shows it is checked with the logger (Logger_test.cpp).
#include "orv/LogAttachment.h"

#include <gtest/gtest.h>

using namespace orv;

TEST(LogAttachment, IsAnEmptyMemoryFileWithoutMimeTypeByDefault) {
    LogAttachment attachment;
    EXPECT_EQ(attachment.getSize(), 0);
    EXPECT_FALSE(attachment.hasMimeType());
    EXPECT_EQ(LogAttachment(QByteArray("abcd")).getSize(), 4);
}
