// SaxNameTable.h: the element names and attribute keys one parse has met, so that
// every repetition shares one QString instead of allocating its own; and a small cache
// that does the same for the short values and texts that repeat.
#pragma once

#include <QtCore/QString>

#include <cstring>
#include <vector>

namespace orv {

class SaxNameTable {
public:
    SaxNameTable() : table(256) {}

    // The shared text of the characters [from, from + len).
    QString const &intern(QChar const *from, int len) {
        unsigned int const h = hash(from, len);
        size_t mask = table.size() - 1;
        for (size_t i = h & mask;; i = (i + 1) & mask) {
            Slot &slot = table[i];
            if (slot.text.isNull()) {
                slot.hash = h;
                slot.text = QString(from, len);
                if (++used * 2 > table.size())
                    return grow(i);
                return slot.text;
            }
            if (slot.hash == h && slot.text.size() == len &&
                std::memcmp(slot.text.constData(), from, sizeof(QChar) * size_t(len)) == 0)
                return slot.text;
        }
    }

private:
    struct Slot {
        unsigned int hash = 0;
        QString text;
    };

    static unsigned int hash(QChar const *from, int len) {
        unsigned int h = 2166136261u;
        for (int i = 0; i < len; ++i)
            h = (h ^ from[i].unicode()) * 16777619u;
        return h;
    }

    // Doubles the table and gives the text that sat in slot index before.
    QString const &grow(size_t index) {
        QString const moved = table[index].text;
        std::vector<Slot> old(table.size() * 2);
        old.swap(table);
        size_t const mask = table.size() - 1;
        QString const *found = nullptr;
        for (Slot &slot : old) {
            if (slot.text.isNull())
                continue;
            size_t i = slot.hash & mask;
            while (!table[i].text.isNull())
                i = (i + 1) & mask;
            table[i] = std::move(slot);
            if (table[i].text.constData() == moved.constData())
                found = &table[i].text;
        }
        return *found;
    }

    std::vector<Slot> table;
    size_t used = 0;

    friend class SaxValueCache;
};

// Direct-mapped and bounded: a repeated value ("true", "0", a kind) costs a hash and a
// compare instead of an allocation, and a value seen once only displaces another.
class SaxValueCache {
public:
    static int const MAX_LENGTH = 24;

    SaxValueCache() : table(4096) {}

    QString get(QChar const *from, int len) {
        if (len > MAX_LENGTH || len == 0)
            return QString(from, len);
        unsigned int const h = SaxNameTable::hash(from, len);
        SaxNameTable::Slot &slot = table[h & (table.size() - 1)];
        if (slot.hash != h || slot.text.size() != len ||
            std::memcmp(slot.text.constData(), from, sizeof(QChar) * size_t(len)) != 0) {
            slot.hash = h;
            slot.text = QString(from, len);
        }
        return slot.text;
    }

private:
    std::vector<SaxNameTable::Slot> table;
};

} // namespace orv
