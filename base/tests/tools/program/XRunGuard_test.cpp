// XRunGuard_test.cpp: one holder per key within a process and across processes, hand-over
// after the holder ends, and recovery from a holder that died without cleaning up.
#include "orv/XRunGuard.h"

#include "ChildLines.h"

#include "support/Test.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QSystemSemaphore>

#include <cstdlib>

using orv::XRunGuard;

namespace {

char const *const keyVariable = "ORV_TEST_RUN_GUARD_KEY";

// A key of this process, and the removal of the semaphore that a guard of a child may
// have left: a semaphore opened in create mode is removed with its last handle.
class TestKey {
public:
    explicit TestKey(char const *name)
        : key(QStringLiteral("orv-guard-%1-%2").arg(QCoreApplication::applicationPid()).arg(name)) {
    }
    ~TestKey() {
        QSystemSemaphore(
            QString::fromLatin1(
                QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex()) +
                QStringLiteral("_memLockKey"),
            1, QSystemSemaphore::Create);
    }
    // What a second process with this key reports.
    QStringList fromChild(char const *test) const {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QLatin1String(keyVariable), key);
        return orv::test::childLines(QCoreApplication::applicationFilePath(),
                                     QStringLiteral("XRunGuardChild.") + test, env);
    }

    QString const key;
};

QString childKey() { return QString::fromUtf8(qgetenv(keyVariable)); }

QString answers(XRunGuard &guard) {
    bool const another = guard.is_another_instance_running();
    return QStringLiteral("another:%1 run:%2").arg(another).arg(guard.run_instance_of_program());
}

} // namespace

TEST(XRunGuard, SecondGuardInProcessIsRefusedUntilTheHolderEnds) {
    TestKey const key("local");
    auto holder = std::make_unique<XRunGuard>(key.key);
    EXPECT_EQ(answers(*holder), QStringLiteral("another:0 run:1"));
    EXPECT_FALSE(holder->is_another_instance_running()); // that's itself
    XRunGuard second(key.key);
    EXPECT_EQ(answers(second), QStringLiteral("another:1 run:0"));
    holder.reset();
    XRunGuard third(key.key);
    EXPECT_TRUE(third.run_instance_of_program());
}

TEST(XRunGuard, SecondProcessIsRefusedWhileThisOneHolds) {
    TestKey const key("process");
    {
        XRunGuard holder(key.key);
        ASSERT_TRUE(holder.run_instance_of_program());
        EXPECT_EQ(key.fromChild("DISABLED_Answers"), QStringList{"another:1 run:0"});
    }
    EXPECT_EQ(key.fromChild("DISABLED_Answers"), QStringList{"another:0 run:1"});
}

TEST(XRunGuard, HolderThatDiedLeavesNoLock) {
    TestKey const key("crash");
    EXPECT_EQ(key.fromChild("DISABLED_HoldsAndDies"), QStringList{"another:0 run:1"});
    XRunGuard next(key.key);
    EXPECT_TRUE(next.run_instance_of_program());
}

TEST(XRunGuardChild, DISABLED_Answers) {
    XRunGuard guard(childKey());
    orv::test::report(answers(guard));
}

TEST(XRunGuardChild, DISABLED_HoldsAndDies) {
    auto *guard = new XRunGuard(childKey()); // never destroyed: the process "crashes"
    orv::test::report(answers(*guard));
    std::_Exit(0);
}
