// OrvGlobal.h: export macro and the few definitions every header of orv base shares.
#pragma once

#include <QtCore/qglobal.h>

#if defined(ORV_BUILDING_LIBRARY)
#define ORV_EXPORT Q_DECL_EXPORT
#else
#define ORV_EXPORT Q_DECL_IMPORT
#endif
