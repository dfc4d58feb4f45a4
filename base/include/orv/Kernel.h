// Kernel.h: the program object of a running process: its command line, its Qt
// application, and the one way of getting work onto the GUI thread.
//
//   orv::KernelTerminal kernel(argc, argv, envp, false);
//   orv::Kernel::runInGui([] { window.refresh(); }, 0);   // from any thread
//   return kernel.execute();
//
// The GUI thread is the one owning the application object (see GuiThread.h).
#pragma once

#include "orv/ArgsEnv.h"
#include "orv/CommandLine.h"
#include "orv/KernelEvents.h"
#include "orv/XAtomic.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMutex>
#include <QtCore/QString>

#include <functional>
#include <vector>

namespace orv {

class XMem;
class XTree;

// What a test was started with: program, command and the --key value items.
struct ORV_EXPORT StartTestParameter {
    QString program;
    QString command;
    std::vector<CommandLineItem> items;
};

class ORV_EXPORT Kernel : public CommandLine {
public:
    // The arguments as the kernel got them, after the placeholder went in. envv is
    // never set by the kernel and stays null.
    static int argc;
    static char **argv;
    static char **envv;
    // The latest kernel constructed; it dangles once that kernel is gone.
    static Kernel *_kernel;
    static ArgsEnv argsEnv;
    static long mainThreadID;
    static XAtomic<bool> atomicFlagReboot;
    // Set before the kernel is built: it becomes the organisation name.
    static QString strCompanyName;
    // Serialises the posting of work from other threads; never held while it runs.
    static QMutex mutexRunner;

    // With insertPlaceHolder, "PlaceHolder" goes in behind the program name (argc
    // grows by one) so that the real arguments stay arguments and no command is seen.
    // The first kernel of the process becomes CommandLine::cmdMain.
    Kernel(int &argc, char **argv, char **envv, bool insertPlaceHolder);
    ~Kernel() override;

    using CommandLine::toString;
    virtual QString toString() const = 0;
    // 0 here; the terminal kernel runs the event loop.
    virtual int execute();
    virtual QString getApplicationPath() const;
    // Nothing here; the terminal kernel ends the event loop.
    virtual void quit();

    static Kernel &kernel();
    static long getMainThreadID();
    static ArgsEnv &getArgsEnv();
    static void setArgsEnv(ArgsEnv const &args);
    // A const source can't be robbed: this copies.
    static void moveArgsEnv(ArgsEnv const &&args);
    static void setCompanyName(QString const &name);
    static QString companyName();
    static void setOrganization(QString const &name);
    // The application's organisation name, set to the company name first if empty.
    static QString getOrganization();
    static void setRebootProgram(bool on);
    static bool isRebootProgram();
    // Replaces the process by a new start with argsEnv; returns only on failure.
    static void rebootProgram();
    static void set_debug_kernel_events(bool on);
    static bool is_debug_kernel_events();

    QString testName() const;
    static QString theTestName();
    StartTestParameter getStartTestParameter() const;
    void show(unsigned int space) const;
    void showArgcArgv(unsigned int space) const;

    // On the GUI thread: f at once (msWait 0) or after msWait by a single-shot timer.
    // From any other thread: posted to the application object and run at the next turn
    // of its event loop, msWait dropped; the caller doesn't wait, and with no
    // application object the work is lost. An empty f runs nothing, on any thread: an
    // ERROR line "XLamdaGUIEvent::runMethod functionGUI == null".
    static void runInGui(std::function<void()> f, quint64 msWait);

    // On the GUI thread f takes mem at once; from any other thread mem moves into an
    // event posted to the application object and f takes it at the next turn of its
    // loop. With no application object the block is lost with the event. An empty f
    // takes nothing: an ERROR line "OrvKernelEvent::runMethod, fuData == nullptr".
    static void move_mem_to_main_thread(XMem &&mem, std::function<void(XMem &&)> f);
    // The same for a tree. It arrives as a root: whatever it hung under stays behind.
    // An empty f drops the tree with an ERROR line, on any thread.
    static void move_tree_to_main_thread(XTree &&tree, std::function<void(XTree &&)> f);

    // Runs a kernel event inside the notification; true whatever the event.
    bool filterOrvEvents(QObject *receiver, QEvent *event);
};

// The console program's kernel: the Qt application first, then the kernel.
class ORV_EXPORT KernelTerminal : public QCoreApplication, public Kernel {
public:
    KernelTerminal(int &argc, char **argv, char **envv, bool insertPlaceHolder);
    ~KernelTerminal() override;

    bool notify(QObject *receiver, QEvent *event) override;

    using Kernel::toString;
    // "KernelTerminal".
    QString toString() const override;
    // QCoreApplication::exec().
    int execute() override;
    // Ends the event loop, from any thread.
    void quit() override;
};

} // namespace orv
