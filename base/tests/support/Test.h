// Test.h: what a test file starts with: GoogleTest, readable Qt values in failure
// messages, and the shared helpers (temporary files, logged lines, console output,
// the event pump, fatal paths).
#pragma once

#include "support/ConsoleCapture.h"
#include "support/EventPump.h"
#include "support/FatalExit.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
