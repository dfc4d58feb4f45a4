// XRunGuard.h: refuses to run a program twice, across processes, by a named key.
//
//   orv::XRunGuard guard(QStringLiteral("my-viewer"));
//   if (!guard.run_instance_of_program())
//       return 0;                       // another instance has it
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <memory>

namespace orv {

// One guard belongs to one thread; guards of different processes are ordered by a
// system semaphore. The system's errors are not passed on: every failure is a false.
class ORV_EXPORT XRunGuard {
public:
    explicit XRunGuard(QString const &key);
    // Gives up the instance, if this guard holds it.
    ~XRunGuard();
    XRunGuard(XRunGuard const &) = delete;
    XRunGuard &operator=(XRunGuard const &) = delete;

    // False when this guard itself holds the instance.
    bool is_another_instance_running();
    // True when this guard now holds the instance, for the rest of its life.
    bool run_instance_of_program();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace orv
