#pragma once
// Private to the library: not part of the API.

#include <cstddef>
#include <cstdint>
#include <utility>

#include "protocol/iterators.h"

namespace Quorvane {
namespace Algorithm {

// Erases the half-open range [first, last) of `elements`; a `last` beyond the size is cut to it.
// HMI_E_ENTRY_NOT_FOUND when first > last, the sequence is empty or first > size; a range that is
// empty after the cut erases nothing and gives success. The tail moves down by exchanging
// elements, so no element is copied.
template <class Sequence>
ErrorValue remove_range(Sequence& elements, std::size_t first, std::size_t last) {
    const std::size_t size = elements.size();
    if (first > last || size == 0 || first > size) {
        return HMI_E_ENTRY_NOT_FOUND;
    }
    if (last > size) {
        last = size;
    }
    if (first == last) {
        return HMI_E_SUCCESS;
    }
    for (std::size_t from = last, to = first; from < size; ++from, ++to) {
        elements[to].swap(elements[from]);
    }
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(size - (last - first)),
                   elements.end());
    return HMI_E_SUCCESS;
}

}  // namespace Algorithm

// The sequence behind Vector<T>. Its two cached iterators stand on the first element and past
// the last at all times: every mutation resets them in place, without allocating.
//
// The element handles have no move operations, so a standard reallocation would deep-copy
// every element (whole trees for a Value). Growth and shifting here exchange implementations
// with the handles' swap instead: a relocation costs one default element, never a copy.
template <class T>
class VectorImpl : public IVector {
public:
    VectorImpl()
        : begin_iterator(new VectorIteratorImpl<T>(this, nullptr)),
          end_iterator(new VectorIteratorImpl<T>(this, nullptr)) {
        refresh();
    }

    VectorImpl(const VectorImpl& other)
        : elements(other.elements),
          begin_iterator(new VectorIteratorImpl<T>(this, nullptr)),
          end_iterator(new VectorIteratorImpl<T>(this, nullptr)) {
        refresh();
    }

    VectorImpl& operator=(const VectorImpl&) = delete;

    unsigned long size() const override { return elements.size(); }
    bool empty() const override { return elements.empty(); }

    ErrorValue reserve(std::size_t count) override {
        if (count > elements.capacity()) {
            relocate(count);
        }
        refresh();
        return HMI_E_SUCCESS;
    }

    ErrorValue clear() override {
        elements.clear();
        refresh();
        return HMI_E_SUCCESS;
    }

    IObject* add(const IObject& item) override { return append(static_cast<const T&>(item)); }

    IObject* add(std::size_t index) override {
        if (index < elements.size()) {
            return &elements[index];
        }
        return add();
    }

    IObject* add() override {
        make_room();
        elements.emplace_back();
        refresh();
        return &elements.back();
    }

    IObject* get(std::size_t index) override {
        return index < elements.size() ? &elements[index] : nullptr;
    }

    ErrorValue remove(std::size_t index) override {
        if (index >= elements.size()) {
            return HMI_E_ENTRY_NOT_FOUND;
        }
        return remove(index, index + 1);
    }

    ErrorValue remove(std::size_t first, std::size_t last) override {
        const ErrorValue result = Algorithm::remove_range(elements, first, last);
        refresh();
        return result;
    }

    T* append(const T& item) {
        if (elements.size() < elements.capacity()) {
            elements.push_back(item);
        } else {
            // `item` may be an element of this very sequence, which growing would move away.
            T copy(item);
            make_room();
            elements.emplace_back();
            elements.back().swap(copy);
        }
        refresh();
        return &elements.back();
    }

    // Inserts a copy of `item` before `index` (cut to the size) and gives the index it got.
    std::size_t insert(std::size_t index, const T& item) {
        append(item);
        const std::size_t last = elements.size() - 1;
        if (index > last) {
            index = last;
        }
        for (std::size_t at = last; at > index; --at) {
            elements[at].swap(elements[at - 1]);
        }
        return index;
    }

    // Index of an iterator's position; the size or more for the end, for an empty handle and
    // for a position in another sequence.
    std::size_t index_of(const IIterator* iterator) const {
        if (iterator == nullptr) {
            return elements.size();
        }
        const auto* at = static_cast<const VectorIteratorBase<T>*>(iterator);
        const auto bytes = reinterpret_cast<std::uintptr_t>(at->position) -
                           reinterpret_cast<std::uintptr_t>(elements.data());
        return bytes / sizeof(T);
    }

    T* position_of(std::size_t index) {
        return VectorIteratorBase<T>::moved(elements.data(), static_cast<long>(index));
    }
    T* end_position() { return position_of(elements.size()); }

    VectorIterator<T> iterator_at(std::size_t index) {
        return VectorIterator<T>(new VectorIteratorImpl<T>(this, position_of(index)));
    }
    ConstVectorIterator<T> const_iterator_at(std::size_t index) {
        return ConstVectorIterator<T>(new ConstVectorIteratorImpl<T>(this, position_of(index)));
    }

    VectorElements<T> elements;
    VectorIterator<T> begin_iterator;
    VectorIterator<T> end_iterator;

private:
    static VectorIteratorBase<T>& cached(VectorIterator<T>& iterator) {
        return *static_cast<VectorIteratorBase<T>*>(iterator.impl_);
    }

    void refresh() {
        cached(begin_iterator).position = position_of(0);
        cached(end_iterator).position = end_position();
    }

    // Makes room for one more element without copying any.
    void make_room() {
        if (elements.size() == elements.capacity()) {
            relocate(elements.empty() ? 4 : 2 * elements.capacity());
        }
    }

    void relocate(std::size_t capacity) {
        VectorElements<T> larger;
        larger.reserve(capacity);
        // Every allocation happens before the first exchange, so a failure loses nothing.
        larger.resize(elements.size());
        for (std::size_t index = 0; index < elements.size(); ++index) {
            larger[index].swap(elements[index]);
        }
        elements.swap(larger);
    }
};

}  // namespace Quorvane
