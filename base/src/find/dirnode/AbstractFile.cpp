// AbstractFile.cpp: the name, path and kinds of the directory-tree nodes, and the
// factory that gives them back their classes when a saved tree is read.
#include "orv/XNodeDir.h"

namespace orv {

namespace {

QString const nameKey = QStringLiteral("name");
QString const name64Key = QStringLiteral("name64");
QString const pathKey = QStringLiteral("path");
QString const path64Key = QStringLiteral("path64");

// Attribute values are saved without escapes and read up to the next quote of either
// kind, and "$(NAME)" is replaced from the environment on reading; such texts go as
// Base64, so that every name the file system allows comes back unchanged.
bool storesPlain(QString const &text) {
    if (text.trimmed() != text || text.contains(QLatin1String("$(")))
        return false;
    QString const special = QStringLiteral("\"'<>&");
    for (QChar const c : text)
        if (c.unicode() < 32 || special.contains(c))
            return false;
    return true;
}

void storeText(XRecord &record, QString const &key, QString const &key64, QString const &text) {
    if (storesPlain(text)) {
        record.setString(key, text);
        record.removeAttrib(key64);
    } else {
        record.setBase64String(key64, text);
        record.removeAttrib(key);
    }
}

QString readText(XRecord const &record, QString const &key, QString const &key64) {
    return record.hasAttribute(key64) ? record.getBase64String(key64, QString())
                                      : record.getString(key, QString());
}

} // namespace

QString const XNodeDir::TYPE = QStringLiteral("Dir");
QString const XNodeFile::TYPE = QStringLiteral("File");

QString AbstractFile::fileName() const { return readText(*this, nameKey, name64Key); }

void AbstractFile::setFileName(QString const &name) { storeText(*this, nameKey, name64Key, name); }

QString AbstractFile::path() const {
    auto const *up = dynamic_cast<AbstractFile const *>(parent());
    if (!up)
        return hasAttribute(pathKey) || hasAttribute(path64Key)
                   ? readText(*this, pathKey, path64Key)
                   : fileName();
    QString const above = up->path();
    return above.endsWith(QLatin1Char('/')) ? above + fileName()
                                            : above + QLatin1Char('/') + fileName();
}

QString AbstractFile::relativePath() const {
    auto const *up = dynamic_cast<AbstractFile const *>(parent());
    if (!up)
        return QString();
    QString const above = up->relativePath();
    return above.isEmpty() ? fileName() : above + QLatin1Char('/') + fileName();
}

void AbstractFile::setRootPath(QString const &path) { storeText(*this, pathKey, path64Key, path); }

XNodeFile::XNodeFile() { setType(TYPE); }

QString XNodeFile::suffix() const {
    QString const name = fileName();
    int const dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

XNode *XDirFileCreator::create(QString const &type) const {
    if (type == XNodeDir::TYPE)
        return new XNodeDir();
    if (type == XNodeFile::TYPE)
        return new XNodeFile();
    return XmlNodeCreator::create(type);
}

QString XDirFileCreator::toString() const {
    return QStringLiteral("XDirFileCreator: <Dir> XNodeDir, <File> XNodeFile");
}

} // namespace orv
