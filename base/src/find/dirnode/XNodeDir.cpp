// XNodeDir.cpp: reading a directory tree of nodes: its folders and files, paths,
// filtered file lists and sizes.
#include "orv/XNodeDir.h"

namespace orv {

namespace {

template <typename Visit> void forEachFile(XNode const &node, Visit visit) {
    for (XNode *child : node.children()) {
        if (auto *file = dynamic_cast<XNodeFile *>(child))
            visit(file);
        else if (auto *dir = dynamic_cast<XNodeDir *>(child))
            forEachFile(*dir, visit);
    }
}

} // namespace

XNodeDir::XNodeDir() { setType(TYPE); }

std::vector<XNodeDir *> XNodeDir::dirs() const {
    std::vector<XNodeDir *> found;
    for (XNode *child : children())
        if (auto *dir = dynamic_cast<XNodeDir *>(child))
            found.push_back(dir);
    return found;
}

std::vector<XNodeFile *> XNodeDir::files() const {
    std::vector<XNodeFile *> found;
    for (XNode *child : children())
        if (auto *file = dynamic_cast<XNodeFile *>(child))
            found.push_back(file);
    return found;
}

std::vector<XNodeFile *> XNodeDir::allFiles() const {
    std::vector<XNodeFile *> found;
    forEachFile(*this, [&](XNodeFile *file) { found.push_back(file); });
    return found;
}

std::vector<XNodeFile *> XNodeDir::filesMatching(SearchFilter const &filter) const {
    std::vector<XNodeFile *> found;
    forEachFile(*this, [&](XNodeFile *file) {
        if (filter.acceptsFile(*file))
            found.push_back(file);
    });
    return found;
}

AbstractFile *XNodeDir::nodeAtPath(QString const &relative) const {
    AbstractFile const *node = this;
    for (QString const &step : relative.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        AbstractFile const *next = nullptr;
        for (XNode *child : node->children()) {
            auto const *entry = dynamic_cast<AbstractFile const *>(child);
            if (entry && entry->fileName() == step) {
                next = entry;
                break;
            }
        }
        if (!next)
            return nullptr;
        node = next;
    }
    return const_cast<AbstractFile *>(node);
}

quint64 XNodeDir::updateSizes() {
    quint64 bytes = 0;
    for (XNode *child : children()) {
        if (auto *dir = dynamic_cast<XNodeDir *>(child))
            bytes += dir->updateSizes();
        else if (auto *file = dynamic_cast<XNodeFile *>(child))
            bytes += file->fileSize();
    }
    setFileSize(bytes);
    return bytes;
}

} // namespace orv
