// HashCommands.cpp: commands of the hash subsystem.
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/MD5.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

#include <QtCore/QFileInfo>

namespace {

using namespace orv;

int md5Command(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("file"))) {
        ppError("md5: missing --file");
        return EXIT_ORV_ARGUMENT;
    }
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    // A missing file would digest as nothing: refuse it instead of printing a digest.
    if (!QFileInfo(file).isFile()) {
        ppError("md5: file '$' not found", file);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    ppInfo("$  $", MD5::md5FromFile(file).toLower(), file);
    return EXIT_ORV_OK;
}

ModuleTests const hashCommands{
    {TestContext::FnKernel(md5Command), QStringLiteral("md5"),
     QStringLiteral("MD5 digest of a file: --file F"), true},
};

} // namespace
