// Kernel.cpp: building the kernel (placeholder, command line, argument copy, main
// thread) and its process-wide statics.
#include "orv/Kernel.h"

#include "orv/Log.h"
#include "orv/XThread.h"

namespace orv {

int Kernel::argc = 0;
char **Kernel::argv = nullptr;
char **Kernel::envv = nullptr;
Kernel *Kernel::_kernel = nullptr;
ArgsEnv Kernel::argsEnv;
long Kernel::mainThreadID = 0;
XAtomic<bool> Kernel::atomicFlagReboot{false};
QString Kernel::strCompanyName;
QMutex Kernel::mutexRunner;

Kernel::Kernel(int &argc, char **argv, char **envv, bool insertPlaceHolder) {
    if (insertPlaceHolder) {
        // The parser takes the first word behind the program as the command; a
        // word that is none keeps the real arguments arguments. The array lives as
        // long as the process: Qt and Kernel::argv may still point into it.
        char **withPlaceHolder = new char *[static_cast<size_t>(argc) + 2];
        withPlaceHolder[0] = argc > 0 ? argv[0] : nullptr;
        withPlaceHolder[1] = const_cast<char *>("PlaceHolder");
        for (int i = 1; i < argc; ++i)
            withPlaceHolder[i + 1] = argv[i];
        withPlaceHolder[argc + 1] = nullptr;
        ++argc;
        argv = withPlaceHolder;
    }
    Kernel::argc = argc;
    Kernel::argv = argv;
    if (!cmdMain)
        cmdMain = this;
    fromMain(argc, argv);
    argsEnv.fromMain(argc, argv, envv);
    mainThreadID = static_cast<long>(getCurrentThreadID());
    _kernel = this;
    QCoreApplication::setOrganizationName(strCompanyName);
}

Kernel::~Kernel() = default;

int Kernel::execute() { return 0; }

QString Kernel::getApplicationPath() const { return QCoreApplication::applicationDirPath(); }

void Kernel::quit() {}

Kernel &Kernel::kernel() { return *_kernel; }

long Kernel::getMainThreadID() { return mainThreadID; }

ArgsEnv &Kernel::getArgsEnv() { return argsEnv; }

void Kernel::setArgsEnv(ArgsEnv const &args) { argsEnv = args; }

void Kernel::moveArgsEnv(ArgsEnv const &&args) { argsEnv = args; }

void Kernel::setCompanyName(QString const &name) { strCompanyName = name; }

QString Kernel::companyName() { return strCompanyName; }

void Kernel::setOrganization(QString const &name) { QCoreApplication::setOrganizationName(name); }

QString Kernel::getOrganization() {
    if (QCoreApplication::organizationName().isEmpty())
        QCoreApplication::setOrganizationName(strCompanyName);
    return QCoreApplication::organizationName();
}

void Kernel::setRebootProgram(bool on) { atomicFlagReboot.store(on); }

bool Kernel::isRebootProgram() { return atomicFlagReboot.load(); }

void Kernel::rebootProgram() { argsEnv.restartProgram(); }

void Kernel::set_debug_kernel_events(bool on) { KernelEvents::setDebug(on); }

bool Kernel::is_debug_kernel_events() { return KernelEvents::isDebug(); }

QString Kernel::testName() const { return getCommand(); }

QString Kernel::theTestName() { return _kernel->getCommand(); }

StartTestParameter Kernel::getStartTestParameter() const {
    return StartTestParameter{getProgram(), getCommand(), getItems()};
}

void Kernel::show(unsigned int space) const { ppDebug(space, "Kernel"); }

void Kernel::showArgcArgv(unsigned int space) const {
    ppDebug(space, "argc:$", argc);
    for (int i = 0; i < argc; ++i)
        ppDebug(space + 4, "argv[$] '$'", i, argv[i] ? argv[i] : "");
}

} // namespace orv
