// XFileMapper.h: a whole file seen as a block of memory through a memory map.
//
//   orv::XFileMapper file(path);
//   if (file.mapReadOnly() && file.mem())              // open, then map lazily
//       count = std::count(file.mem(), file.mem() + file.length(), '\n');
//   file.unMap();                                      // unmaps and closes
//
// "map..." only opens: the map is made by the first mem(), so a caller can open,
// resize, then map. The map keeps the size the file had at that moment.
#pragma once

#include "orv/AbstractMemory.h"
#include "orv/XByteArray.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

class QObject;

namespace orv {

// Belongs to one thread at a time (the QFile inside follows Qt's QObject rules).
class ORV_EXPORT XFileMapper : public AbstractMemory {
public:
    XFileMapper();
    explicit XFileMapper(QString const &fileName, QObject *parent = nullptr);
    // By the absolute path.
    explicit XFileMapper(QFileInfo const &fileInfo, QObject *parent = nullptr);
    ~XFileMapper() override;
    XFileMapper(XFileMapper const &) = delete;
    XFileMapper &operator=(XFileMapper const &) = delete;

    void setFileName(QString const &name) { file.setFileName(name); }
    QString fileName() const { return file.fileName(); }
    bool isFileName(QString const &name) const { return file.fileName() == name; }

    // Open the file; refused while mapped. mapReadWrite creates a missing file.
    bool mapReadOnly();
    bool mapReadWrite();

    // The map, made on the first call after opening; null when the file isn't open
    // or the system refuses the map (an empty file, for one): a later call tries again.
    char const *mem() const override { return mapped(); }
    char *mem() override { return mapped(); }
    // The file's size now, mapped or not.
    quint64 length() const override { return static_cast<quint64>(file.size()); }
    bool isMapped() const { return pMap != nullptr; }
    // Only before the first mem().
    bool resize(quint64 sz) { return file.resize(static_cast<qint64>(sz)); }
    // The last mapped byte; null when not mapped or empty.
    char *lastChar();

    // A copy of the mapped bytes; empty when mem() hasn't mapped yet.
    XByteArray createByteArray() const override;

    // Unmaps and closes; false (file still open) when nothing was mapped.
    bool unMap();

private:
    bool open(QIODevice::OpenMode mode, char const *alreadyMapped);
    char *mapped() const;

    // Mapping is lazy, so that the const mem() of the block interface maps too.
    mutable QFile file;
    mutable char *pMap = nullptr;
};

} // namespace orv
