// XRecord.h: a table of string keys and string values, kept in key order, with typed
// access; the attribute store of XML nodes and a small parameter block of its own.
//
//   orv::XRecord record;
//   record.fromString("width=640; title = \"a b\"", true, false);
//   record.getInt("width", 0);               // 640
//   record.setQPoint("at", QPoint(1, 2));    // stored as "1,2"
//
// Every value is text in one written form per type. A getter gives its default only
// for an absent key; what unreadable text gives is told per getter.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/Res.h"
#include "orv/StringEnum.h"

#include <QtCore/QMargins>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <functional>
#include <map>
#include <vector>

namespace orv {

class XMem;
class XStringStream;

// Keeps a text in its Base64 form.
class ORV_EXPORT String64 {
public:
    String64() = default;
    explicit String64(QString const &text) { fromString(text); }
    virtual ~String64();

    String64 &operator=(QString const &text);
    void fromString(QString const &text);
    // The decoded text.
    QString toString() const;
    QString const &encoded() const { return stored; }

private:
    QString stored;
};

// The typed record in the order XNode extends it; no owner deletes through this type.
struct ORV_EXPORT AbstractXRecord {
    using KeyValueText = std::function<QString(QString const &, QString const &)>;

    virtual void showContents(unsigned int indent, unsigned int level, KeyValueText fn) const = 0;
    virtual QString toString() const = 0;
    virtual QString toStringAttributes() const = 0;
    virtual QString realTypeAsString() const = 0;
    virtual void setBool(QString const &key, bool value) = 0;
    virtual void setString(QString const &key, QString const &value) = 0;
    virtual void setShort(QString const &key, short value) = 0;
    virtual void setInt(QString const &key, int value) = 0;
    virtual void setUInt(QString const &key, unsigned int value) = 0;
    virtual void setLong(QString const &key, qint64 value) = 0;
    virtual void setULong(QString const &key, quint64 value) = 0;
    virtual void setFloat(QString const &key, float value) = 0;
    virtual void setDouble(QString const &key, double value) = 0;
    virtual QString getString(QString const &key, QString const &def) const = 0;
    virtual short getShort(QString const &key, short def) const = 0;
    virtual int getInt(QString const &key, int def) const = 0;
    virtual unsigned int getUInt(QString const &key, unsigned int def) const = 0;
    virtual qint64 getLong(QString const &key, qint64 def) const = 0;
    virtual quint64 getULong(QString const &key, quint64 def) const = 0;
    virtual float getFloat(QString const &key, float def) const = 0;
    virtual double getDouble(QString const &key, double def) const = 0;
    virtual int countAttributes() const = 0;
    virtual bool hasAttributes() const = 0;
    virtual bool hasAttribute(QString const &key) const = 0;
    virtual bool isString(QString const &key, QString const &s) const = 0;
    virtual bool hasKey(QString const &key) const = 0;
    virtual void setName(QString const &name) = 0;
    virtual bool isName(QString const &name) const = 0;
    virtual QString getName() const = 0;
    virtual bool hasName() const = 0;
    virtual bool isEnabled(bool def) const = 0;
    virtual void setEnabled(bool on) = 0;
    virtual void clear() = 0;
    virtual bool isEmpty() const = 0;

    // Prints a key and its value in showContents: "key: 'value'" unless replaced.
    static KeyValueText kvAsString;

protected:
    ~AbstractXRecord() = default;
};

struct ORV_EXPORT XRecord : AbstractXRecord {
    XRecord() = default;
    XRecord(XRecord const &) = default;
    XRecord(XRecord &&) noexcept = default;
    XRecord &operator=(XRecord const &) = default;
    XRecord &operator=(XRecord &&) noexcept = default;

    static QPoint const QPOINT_DEFAULT;
    static QPointF const QPOINT_F_DEFAULT;
    static QSize const QSIZE_DEFAULT;
    static QSizeF const QSIZE_F_DEFAULT;
    static QRect const QRECT_DEFAULT;
    static QRectF const QRECT_F_DEFAULT;
    static QMargins const QMARGINS_DEFAULT;
    static Res const RES_DEFAULT;

    void showContents(unsigned int indent, unsigned int level, KeyValueText fn) const override;
    // ", attributes:<count>, {<toStringAttributes>}"
    QString toString() const override;
    // "key: 'value'" joined with ", ", in key order.
    QString toStringAttributes() const override;
    QString realTypeAsString() const override { return QStringLiteral("XRecord"); }

    // "true" or "false".
    void setBool(QString const &key, bool value) override;
    // The one place where a value enters: an empty key logs a warning and stores nothing.
    void setString(QString const &key, QString const &value) override;
    void setShort(QString const &key, short value) override;
    void setInt(QString const &key, int value) override;
    void setUInt(QString const &key, unsigned int value) override;
    void setLong(QString const &key, qint64 value) override;
    void setULong(QString const &key, quint64 value) override;
    // As double: "%f", six decimals.
    void setFloat(QString const &key, float value) override;
    void setDouble(QString const &key, double value) override;

    // A present empty value is returned as it is.
    QString getString(QString const &key, QString const &def = QString()) const override;
    // Through getInt, cut to 16 bits.
    short getShort(QString const &key, short def) const override;
    // def also when the text is no decimal number.
    int getInt(QString const &key, int def) const override;
    // Through getLong, cut to 32 bits.
    unsigned int getUInt(QString const &key, unsigned int def) const override;
    qint64 getLong(QString const &key, qint64 def) const override;
    quint64 getULong(QString const &key, quint64 def) const override;
    float getFloat(QString const &key, float def) const override;
    // Unreadable text gives 0.0, not def.
    double getDouble(QString const &key, double def) const override;

    // Lower-cased "true" and "on" are true, and any text that reads as an int >= 1;
    // everything else present is false.
    bool getBool(QString const &key, bool def) const;
    bool isBool(QString const &key, bool def) const { return getBool(key, def); }

    // Two or four numbers joined by ","; reading cuts at "," and blanks and gives def
    // unless the count is right. Tokens that are no numbers read as 0.
    QPoint getQPoint(QString const &key, QPoint const &def = QPOINT_DEFAULT) const;
    QPointF getQPointF(QString const &key, QPointF const &def = QPOINT_F_DEFAULT) const;
    QSize getQSize(QString const &key, QSize const &def = QSIZE_DEFAULT) const;
    QSizeF getQSizeF(QString const &key, QSizeF const &def = QSIZE_F_DEFAULT) const;
    Res getRes(QString const &key, Res const &def = RES_DEFAULT) const;
    QRect getQRect(QString const &key, QRect const &def = QRECT_DEFAULT) const;
    QRectF getQRectF(QString const &key, QRectF const &def = QRECT_F_DEFAULT) const;
    QMargins getQMargins(QString const &key, QMargins const &def = QMARGINS_DEFAULT) const;
    void setQPoint(QString const &key, QPoint const &value);
    // Real numbers in six significant digits: (1.5, 2) is "1.5,2".
    void setQPointF(QString const &key, QPointF const &value);
    void setQSize(QString const &key, QSize const &value);
    void setQSizeF(QString const &key, QSizeF const &value);
    void setRes(QString const &key, Res const &value);
    void setQRect(QString const &key, QRect const &value);
    void setQRectF(QString const &key, QRectF const &value);
    void setQMargins(QString const &key, QMargins const &value);

    // False for a null out or an absent key. Otherwise n floats, missing ones 0, with
    // a warning when the count of tokens differs from n.
    bool getArrayFloat(QString const &key, float *out, unsigned int n) const;
    void setArrayFloat(QString const &key, float const *ar, unsigned int n);
    std::vector<QString> getArrayString(QString const &key) const;
    bool hasArray(QString const &key) const;
    // Stored as the Base64 of the decimal list "1, 255".
    QByteArray getQByteArray(QString const &key) const;
    void setQByteArray(QString const &key, QByteArray const &bytes);
    // The block as Base64; an empty value gives an empty block.
    XMem get_mem(QString const &key) const;
    // A block whose Base64 would not fit a QString (about 750 MiB) leaves the key as
    // it was, with an ERROR line.
    void set_mem(QString const &key, XMem const &block);
    std::vector<QString> get_string_array(QString const &key) const;
    void set_string_array(QString const &key, std::vector<QString> const &texts);

    // Base64 of the UTF-8 text.
    QString getBase64String(QString const &key, QString const &def) const;
    void setBase64String(QString const &key, QString const &text);
    // Stores the decoded text, plain.
    void setString64(QString const &key, String64 const &text);
    // A copy of def when absent, or with a value of fewer than two comma tokens (a warning).
    StringEnum getStringEnum(QString const &key, StringEnum const &def) const;
    void setStringEnum(QString const &key, StringEnum const &value);

    // The attribute "name"; an empty one counts as no name.
    void setName(QString const &name) override { setString(QStringLiteral("name"), name); }
    QString getName() const override { return getString(QStringLiteral("name"), QString()); }
    bool hasName() const override { return !getName().isEmpty(); }
    bool isName(QString const &name) const override { return hasName() && getName() == name; }
    bool isEnabled(bool def) const override { return getBool(QStringLiteral("enabled"), def); }
    void setEnabled(bool on) override { setBool(QStringLiteral("enabled"), on); }
    bool hasEnabledFlag() const { return hasAttribute(QStringLiteral("enabled")); }
    bool isVisible(bool def) const { return getBool(QStringLiteral("visible"), def); }
    bool hasVisibleFlag() const { return hasAttribute(QStringLiteral("visible")); }

    int countAttributes() const override { return static_cast<int>(attributes.size()); }
    bool hasAttributes() const override { return !attributes.empty(); }
    bool hasAttribute(QString const &key) const override { return attributes.count(key) != 0; }
    bool hasKey(QString const &key) const override { return hasAttribute(key); }
    bool isEmpty() const override { return attributes.empty(); }
    bool isString(QString const &key, QString const &s) const override;
    // Absent: stores def and gives it.
    QString getSetString(QString const &key, QString const &def);
    // The value when a file of that path exists, def otherwise.
    QString getExistingFile(QString const &key, QString const &def) const;
    QString firstKey() const;
    std::vector<QString> keys() const;
    void removeAttrib(QString const &key) { attributes.erase(key); }
    void clear() override { attributes.clear(); }
    std::map<QString, QString> const &getAttributes() const { return attributes; }
    // Clears table and copies every attribute into it but an empty "name". Null is fatal.
    void copyAttributesTo(XRecord *table) const;

    // Calls fn once per attribute in key order and gives the text it wrote.
    QString attributesLoop(
        std::function<void(XStringStream &, QString const &key, QString const &value, bool isLast)>
            fn) const;

    virtual ~XRecord();
    // Replaces the keys it finds and keeps the others. pairs false reads the classic
    // form `a="1" b="2"`; pairs true reads `a=1; b = "x y"` segments, cut also at line
    // ends when multiLine. A malformed piece ends the parse; what was stored stays.
    virtual void fromString(QString const &text, bool pairs, bool multiLine);
    // Every variable of the process environment.
    virtual void fromEnvironment();
    // "key=value" joined with " ".
    virtual QString toStringEnv() const;
    // "--key value" joined with " ": the form a command line reads back.
    virtual QString toStringCmd() const;
    virtual void setVisible(bool on) { setBool(QStringLiteral("visible"), on); }
    // A hook for subclasses; the record itself stays as it is.
    virtual void reset();

protected:
    // Hands other's whole table over in one move (XNode::moveAttributes); other ends empty.
    void takeAttributesFrom(XRecord &other) {
        attributes = std::move(other.attributes);
        other.attributes.clear();
    }

private:
    void parseAttributesClassic(QString const &text);
    void parseAttributePairs(QString const &text, bool multiLine);

    std::map<QString, QString> attributes;
};

} // namespace orv
