// ArrayView.h: a read-only window on elements that someone else owns: a pointer and a
// count, with begin/end and [], copied freely and never freeing anything.
//
//   orv::ArrayView<QFileInfo const *> files = dirInfo.get_view_filtered_files();
//   for (QFileInfo const *file : files) ...
//
// The view is valid only as long as the owner keeps the elements where they are.
#pragma once

#include <cstddef>
#include <vector>

namespace orv {

template <typename T> class ArrayView {
public:
    ArrayView() = default;
    ArrayView(T const *data, size_t size) : first(data), count(size) {}
    ArrayView(std::vector<T> const &elements) : first(elements.data()), count(elements.size()) {}

    T const *data() const { return first; }
    size_t size() const { return count; }
    bool empty() const { return count == 0; }
    T const *begin() const { return first; }
    T const *end() const { return first + count; }
    // Unchecked, as for a plain array.
    T const &operator[](size_t i) const { return first[i]; }

private:
    T const *first = nullptr;
    size_t count = 0;
};

} // namespace orv
