// StringTools.h: the library's text toolbox in one include: number and size texts,
// variables and environment, text and byte search, paths, Qt value texts. The
// existence tests and mkDirPath live in XFile.h, is_Gui_Thread in GuiThread.h.
//
//   #include "orv/StringTools.h"
//   ppInfo("read $ in $ s", orv::formatBytes(n), orv::formatMicrosecond_as_Sec(us));
#pragma once

#include "orv/EnvVariables.h"
#include "orv/FileHelpers.h"
#include "orv/GuiThread.h"
#include "orv/QtToString.h"
#include "orv/StringFormat.h"
#include "orv/StringText.h"
#include "orv/XFile.h"
#include "orv/XStringRef.h"
#include "orv/XStringStream.h"
