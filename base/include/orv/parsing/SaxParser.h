// SaxParser.h: the library's forgiving XML scanner, which calls four hooks per
// definition, comment, text and tag, and the control one parse fills for a watcher.
//
//   struct Counter : orv::SaxParser {
//       int tags = 0;
//       bool inspectTypeAttribs(QString const &, std::map<QString, QString> const &, int) override
//       {
//           return ++tags, true;
//       }
//   } counter;
//   counter.setBuffer(QStringLiteral("<a><b/></a>"));
//   orv::XNode_Parse_Control control;
//   counter.parse(control);                   // counter.tags == 2
//
// The language is a dialect: elements, quoted attributes, one text per element,
// comments and processing-instruction lines. No entities, CDATA, namespaces or DTD;
// a closing tag is never compared with its opening tag; what it doesn't know between
// tags it skips without a word.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XEventListener.h"

#include <QtCore/QString>

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace orv {

class XNode;

// Filled by one parse; another thread may set cancelled and read the atomics at any
// time. Listeners run on the GUI thread, posted, possibly after the parse ended: the
// control must outlive them.
struct ORV_EXPORT XNode_Parse_Control {
    // Progress is taken (and the clock read) once per this many characters.
    static constexpr quint64 BYTES_BETWEEN_TIME_CALLS = 500000;

    XNode_Parse_Control() = default;
    XNode_Parse_Control(XNode_Parse_Control const &) = delete;
    XNode_Parse_Control &operator=(XNode_Parse_Control const &) = delete;

    XAtomic<int> cancelled{0};
    XAtomic<int> percent{0};
    XAtomic<quint64> timeStart{0}; // microseconds
    XAtomic<quint64> timeLast{0};
    XAtomic<quint64> bytesRead{0}; // characters consumed
    XAtomic<quint64> bytesTotal{0};
    XNode *result = nullptr; // not owned
    XEventListener<void(XNode_Parse_Control &)> listeners;
    // What went wrong with INCLUDE elements (missing, unreadable, a loop), one text each;
    // the parse itself goes on without them. Written by the parsing thread only.
    std::vector<QString> includeProblems;

    void cancel() { cancelled = 1; }
    // Clears all but the listeners.
    void reset();
    bool isDone() const { return cancelled != 0 || percent == 100; }
    bool isOK() const { return percent == 100 && result != nullptr; }
    quint64 time_consumption() const { return timeLast - timeStart; }
    // "XNode parsing Cancelled! ...", "XNode parsing DONE! ..." or "XNode still parsing...".
    QString toString() const;
};

class SaxNameTable;
class SaxValueCache;

class ORV_EXPORT AbstractSaxHelper {
public:
    // One tag's attributes, sorted by key.
    using AttributeList = std::vector<std::pair<QString, QString>>;

    // What the reading operations give at the end of the buffer.
    static QChar const XCHAR;
    // Deeper nesting fails the parse: trees stay within what recursive walks can take.
    static constexpr int MAX_DEPTH = 4096;

    AbstractSaxHelper();
    AbstractSaxHelper(AbstractSaxHelper const &) = delete;
    AbstractSaxHelper &operator=(AbstractSaxHelper const &) = delete;

    virtual void inspectDefinition(QString const &definition) = 0;
    virtual void inspectCommend(QString const &comment, int depth) = 0;
    virtual void inspectText(QString const &text, int depth) = 0;
    // A false fails the parse. attributes are in key order, a repeated key's last value.
    virtual bool inspectTypeAttribs(QString const &type,
                                    std::map<QString, QString> const &attributes, int depth) = 0;
    virtual ~AbstractSaxHelper();

    // Holds text and starts at its first character, after a Latin-1 read byte-order mark.
    void setBuffer(QString const &text);
    // The file decoded as UTF-8; false (a log line) when it gives no text.
    bool readFile(QString const &path);
    // False for no buffer, an element left open at the end, an empty attribute key,
    // a false from a hook, or nesting deeper than MAX_DEPTH.
    bool parse(XNode_Parse_Control &control);

    quint64 remainChars() const { return static_cast<quint64>(end - cur); }
    QChar peekChar() const { return cur < end ? *cur : XCHAR; }
    QChar peekNextChar() const { return cur + 1 < end ? cur[1] : XCHAR; }
    // The character at the read position, which moves on; XCHAR at the end or once a
    // progress step found the parse cancelled.
    QChar nextChar(XNode_Parse_Control &control);
    // c is "<" and "!--" follows the read position.
    bool isPeekStartComment(QChar c) const;
    // c is "-" and ">" stands at the read position.
    bool isPeekEndComment(QChar c) const;
    // 0 at the start, 2 after a definition, 3 in an opening tag, 4 after a closing tag.
    int getState() const { return state; }

protected:
    // Called for every tag; the default hands a map to inspectTypeAttribs. A subclass
    // that builds trees takes the sorted list as it is and saves a map per element.
    virtual bool inspectTag(QString const &type, AttributeList const &attributes, int depth);

    bool parseTag(int depth, XNode_Parse_Control &control);
    bool readCommend(int depth, XNode_Parse_Control &control);
    void readDefinition();
    void readText(int depth);
    void BOM_check();

private:
    bool readOpenTag(int depth, bool &selfClosed);
    void readAttributes(QChar const *from, QChar const *to);
    void addAttribute(QString const &key, QString &&value);
    // Moves to the next character and takes a progress step when one is due.
    bool advance(XNode_Parse_Control &control);
    // Moves to the next "<", taking the progress steps on the way; false at the end.
    bool skipToTag(XNode_Parse_Control &control);
    void progressStep(XNode_Parse_Control &control);

    QString text; // keeps the characters alive
    QChar const *parseBuffer = nullptr;
    quint64 size = 0;
    quint64 consumed = 0;
    QChar const *cur = nullptr;
    QChar const *end = nullptr;
    QChar const *nextCheck = nullptr;
    bool owner = true;
    int state = 0;
    AttributeList attributes;
    std::unique_ptr<SaxNameTable> names;
    std::unique_ptr<SaxValueCache> values;
};

// The scanner with hooks that do nothing, and the file it reads.
class ORV_EXPORT SaxParser : public AbstractSaxHelper {
public:
    void inspectDefinition(QString const &) override {}
    void inspectCommend(QString const &, int) override {}
    void inspectText(QString const &, int) override {}
    bool inspectTypeAttribs(QString const &, std::map<QString, QString> const &, int) override {
        return true;
    }

    QString getFile() const { return file; }
    void setFile(QString const &path) { file = path; }
    // Stores the path, then reads the text.
    bool readFile(QString const &path);
    // Decodes UTF-8.
    void set_QByteArray(QByteArray const &bytes);

private:
    QString file;
};

} // namespace orv
