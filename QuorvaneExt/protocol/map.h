#pragma once
// Private to the library: not part of the API.

#include <cstdlib>
#include <string_view>
#include <tuple>

#include "protocol/iterators.h"

namespace Quorvane {

// The keyed collection behind Map<T>: a balanced tree ordered by the bytes of the keys. Its two
// cached iterators stand on the first node and on the end at all times; every mutation resets
// them in place, without allocating.
template <class T>
class MapImpl : public IList {
public:
    using Position = typename MapElements<T>::iterator;

    MapImpl()
        : begin_iterator(new IteratorImpl<T>(Position(), this)),
          end_iterator(new IteratorImpl<T>(Position(), this)) {
        refresh();
    }

    MapImpl(const MapImpl& other)
        : begin_iterator(new IteratorImpl<T>(Position(), this)),
          end_iterator(new IteratorImpl<T>(Position(), this)),
          elements(other.elements) {
        refresh();
    }

    MapImpl& operator=(const MapImpl&) = delete;

    unsigned long size() const override { return elements.size(); }
    bool empty() const override { return elements.empty(); }
    // A tree has no capacity to grow.
    ErrorValue reserve(std::size_t) override { return HMI_E_NOT_IMPLEMENTED; }

    ErrorValue clear() override {
        elements.clear();
        refresh();
        return HMI_E_SUCCESS;
    }

    ErrorValue remove(const char* key) override {
        const Position at = elements.find(checked(key));
        if (at == elements.end()) {
            return HMI_E_ENTRY_NOT_FOUND;
        }
        erase(at);
        return HMI_E_SUCCESS;
    }

    IObject* add(const char* key, const IObject& item) override {
        return AddMap(key, &static_cast<const T&>(item));
    }
    IObject* add(const char* key) override { return AddMap(key, nullptr); }

    IObject* get(const char* key) override {
        const Position at = elements.find(checked(key));
        return at == elements.end() ? nullptr : &at->second;
    }

    // The node of `key`, newly made from `item` if the key is new. An existing element is
    // overwritten only when `update` is set.
    Position insert(const char* key, const T& item, bool update) {
        const std::string_view wanted = checked(key);
        Position at = elements.lower_bound(wanted);
        if (at != elements.end() && at->first == wanted) {
            if (update) {
                T copy(item);
                at->second.swap(copy);
            }
            return at;
        }
        at = elements.emplace_hint(at, std::piecewise_construct, std::forward_as_tuple(wanted),
                                   std::forward_as_tuple(item));
        refresh();
        return at;
    }

    Position find(const char* key) { return elements.find(checked(key)); }

    // Erases the node and gives its successor.
    Position erase(Position at) {
        const Position next = elements.erase(at);
        refresh();
        return next;
    }

    Iterator<T> iterator_at(Position at) { return Iterator<T>(new IteratorImpl<T>(at, this)); }
    ConstIterator<T> const_iterator_at(Position at) {
        return ConstIterator<T>(new ConstIteratorImpl<T>(at, this));
    }

    static Position position_of(const IIterator* iterator) {
        return static_cast<const MapIteratorBase<T>*>(iterator)->position;
    }

    // Whether `iterator` walks this map. Erasing through a position of another tree would unlink
    // its node from the wrong one; an empty handle walks nothing.
    bool owns(const IIterator* iterator) const {
        return iterator != nullptr &&
               static_cast<const MapIteratorBase<T>*>(iterator)->container == this;
    }

    Iterator<T> begin_iterator;
    Iterator<T> end_iterator;
    MapElements<T> elements;

private:
    // A null key is a programming error that must not go unnoticed: it ends the process.
    static std::string_view checked(const char* key) {
        if (key == nullptr) {
            std::abort();
        }
        return key;
    }

    static MapIteratorBase<T>& cached(Iterator<T>& iterator) {
        return *static_cast<MapIteratorBase<T>*>(iterator.impl_);
    }

    void refresh() {
        cached(begin_iterator).position = elements.begin();
        cached(end_iterator).position = elements.end();
    }

    // Both add forms: the element of `key`, overwritten with `item` when one is given, or a new
    // default element for a new key. A null key changes nothing.
    T* AddMap(const char* key, const T* item) {
        if (key == nullptr) {
            return nullptr;
        }
        if (item != nullptr) {
            return &insert(key, *item, true)->second;
        }
        const std::string_view wanted = key;
        Position at = elements.lower_bound(wanted);
        if (at == elements.end() || at->first != wanted) {
            at = elements.emplace_hint(at, std::piecewise_construct, std::forward_as_tuple(wanted),
                                       std::forward_as_tuple());
            refresh();
        }
        return &at->second;
    }
};

}  // namespace Quorvane
