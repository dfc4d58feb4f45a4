// XTypeSupporter.h: the type registry of the tree: which type names exist and in which
// category (XTypeSet), how each built-in type is streamed and shown (XFunctionMapper),
// and the object every tree operation that touches bytes or text is handed.
//
//   orv::XTypeSupporter const &types = orv::XTypeSupporter::basicTypes();
//   types.isSimpleType(QStringLiteral("int32"));   // true
//   tree.saveAsFile(path, types);
//
// A library with its own types derives from XTypeSupporter, overrides readVal, writeVal
// and the array slots for its names, calls the base for the rest, and passes its
// supporter to the tree's load and save functions. Files don't record the supporter.
#pragma once

#include "orv/NameAble.h"
#include "orv/OrvGlobal.h"

#include <QtCore/QHash>
#include <QtCore/QString>

#include <functional>
#include <set>
#include <unordered_map>

namespace orv {

class XDataStream;
class XTreeArray;
class XVal;

// The names by category. Links are in no set.
class ORV_EXPORT XTypeSet {
public:
    static constexpr unsigned int SET_SIMPLE = 0;
    static constexpr unsigned int SET_TREE = 1;
    static constexpr unsigned int SET_ARRAY = 2;

    // The 26 simple types, "XTree" and "XTreeArray".
    XTypeSet();
    XTypeSet(XTypeSet const &other);
    XTypeSet(XTypeSet &&other) noexcept;
    XTypeSet &operator=(XTypeSet const &other);
    XTypeSet &operator=(XTypeSet &&other) noexcept;

    // False, with three console lines, when the name is already in that set.
    bool _addType(QString const &name, unsigned int index);
    bool isTypeSimple(QString const &name) const { return sets[SET_SIMPLE]->count(name) != 0; }
    bool isTypeTree(QString const &name) const { return sets[SET_TREE]->count(name) != 0; }
    bool isTypeArray(QString const &name) const { return sets[SET_ARRAY]->count(name) != 0; }
    // "XLink", which is in no set.
    static bool isTypeLink(QString const &name);
    bool contains(QString const &name) const;
    void showTypes(unsigned int space) const;

private:
    void pointToOwnSets();

    std::set<QString> simpleNames;
    std::set<QString> treeNames;
    std::set<QString> arrayNames;
    // By set index; copies and moves point them at their own sets.
    std::set<QString> *sets[3];
};

// The one table per process from a type name to its five handlers, filled from a
// template per built-in type by the first XTypeSupporter. Read-only afterwards, so
// lookups may run on any thread.
class ORV_EXPORT XFunctionMapper {
public:
    using WriteFn = std::function<void(XDataStream &, XVal const &)>;
    using ReadFn = std::function<void(XDataStream &, XVal &)>;
    using WriteArrayFn = std::function<bool(XDataStream &, XTreeArray const &)>;
    using ReadArrayFn = std::function<bool(XDataStream &, XVal &, quint64 count)>;
    using ToStringFn = std::function<QString(XVal const &)>;

    // The five tables share one key set, so one lookup finds all five.
    struct Handlers {
        WriteFn write;
        ReadFn read;
        WriteArrayFn writeArray;
        ReadArrayFn readArray;
        ToStringFn toString;
        // Bytes of one element in a raw array block.
        quint64 elementSize = 0;
    };

    static XFunctionMapper &instance();

    // The handlers of a name, or null.
    Handlers const *find(QString const &name) const;
    bool contains(QString const &name) const { return find(name) != nullptr; }
    size_t size() const { return table.size(); }

    // Adds the handlers of a built-in type; a name already present gets an ERROR line
    // and nothing is added.
    template <typename T> void addFunction();

private:
    XFunctionMapper() = default;

    struct NameHash {
        size_t operator()(QString const &name) const { return qHash(name, 0); }
    };
    std::unordered_map<QString, Handlers, NameHash> table;
};

class ORV_EXPORT XTypeSupporter : public NameAble {
public:
    // Named "Standard"; the first one of the process fills the mapper.
    XTypeSupporter();
    ~XTypeSupporter() override;
    using NameAble::toString;

    // The default supporter of the process, made on first use and never destroyed.
    static XTypeSupporter const &basicTypes();

    // Ends the process (exitApp, status 1) for any array of a known type: the text form
    // of a whole array value was never finished. "" for an unknown element type.
    virtual QString arrayAsString(XTreeArray const &array) const;
    // The text of toString sent to the log; false with a line for an unknown type.
    virtual bool showArray(XTreeArray const &array, unsigned int space) const;
    // Numbers and bools blank-separated (5, "...", 5 beyond 10 elements), "int8" as a hex
    // dump; "" for other element types.
    virtual QString toString(XTreeArray const &array) const;

    bool hasType(QString const &name) const { return typeSet.contains(name); }
    bool isSimpleType(QString const &name) const { return typeSet.isTypeSimple(name); }
    bool isTreeType(QString const &name) const { return typeSet.isTypeTree(name); }
    bool isArrayType(QString const &name) const { return typeSet.isTypeArray(name); }
    bool isLink(QString const &name) const { return XTypeSet::isTypeLink(name); }
    void showKnownTypes(unsigned int space) const { typeSet.showTypes(space); }

protected:
    // The extension seam. Each gives false for a type it doesn't know.
    virtual bool writeVal(XDataStream &stream, XVal const &val) const;
    virtual bool readVal(XDataStream &stream, QString const &type, XVal &val) const;
    virtual bool readTreeArray(XDataStream &stream, QString const &type, XVal &val,
                               unsigned int count) const;
    // A tree or array value is fatal; "" for a type the mapper doesn't know.
    virtual QString val_simpleType_as_String(XVal const &val) const;
    virtual bool writeArray(XDataStream &stream, XTreeArray const &array) const;
    virtual bool readArray(XDataStream &stream, QString const &type, quint64 count,
                           XVal &val) const;
    virtual bool writeTree(XDataStream &stream, XVal const &val) const;
    virtual bool readTree(XDataStream &stream, XVal &val, QString const &type) const;

    // Derived supporters add their names here.
    XTypeSet typeSet;

    friend class XDataStream;
    friend class XVal;
};

} // namespace orv
