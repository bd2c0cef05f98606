// Map<T>: the handle over MapImpl<T>, compiled for every element type.

#include "protocol/map.h"

#include <utility>

namespace Quorvane {
namespace {

template <class T>
MapImpl<T>& impl_of(IList* impl) {
    return *static_cast<MapImpl<T>*>(impl);
}

}  // namespace

template <class T>
Map<T>::Map() : impl_(nullptr) {
    create();
}

template <class T>
Map<T>::Map(const Map& other) : impl_(new MapImpl<T>(impl_of<T>(other.impl_))) {}

template <class T>
Map<T>& Map<T>::operator=(Map other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
Map<T>::~Map() {
    cleanup();
}

template <class T>
void Map<T>::create() {
    IList* fresh = new MapImpl<T>;
    cleanup();
    impl_ = fresh;
}

template <class T>
void Map<T>::cleanup() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
unsigned long Map<T>::size() const {
    return impl_->size();
}

template <class T>
bool Map<T>::empty() const {
    return impl_->empty();
}

template <class T>
Iterator<T> Map<T>::begin() {
    return impl_of<T>(impl_).begin_iterator;
}

template <class T>
Iterator<T> Map<T>::end() {
    return impl_of<T>(impl_).end_iterator;
}

template <class T>
ConstIterator<T> Map<T>::begin() const {
    return ConstIterator<T>(impl_of<T>(impl_).begin_iterator);
}

template <class T>
ConstIterator<T> Map<T>::end() const {
    return ConstIterator<T>(impl_of<T>(impl_).end_iterator);
}

template <class T>
Iterator<T> Map<T>::insert(const char* key, const T& item) {
    MapImpl<T>& impl = impl_of<T>(impl_);
    return impl.iterator_at(impl.insert(key, item, false));
}

template <class T>
Iterator<T> Map<T>::insert_or_update(const char* key, const T& item) {
    MapImpl<T>& impl = impl_of<T>(impl_);
    return impl.iterator_at(impl.insert(key, item, true));
}

template <class T>
Iterator<T> Map<T>::find(const char* key) {
    MapImpl<T>& impl = impl_of<T>(impl_);
    return impl.iterator_at(impl.find(key));
}

template <class T>
ConstIterator<T> Map<T>::find(const char* key) const {
    MapImpl<T>& impl = impl_of<T>(impl_);
    return impl.const_iterator_at(impl.find(key));
}

template <class T>
T* Map<T>::get(const char* key) {
    return static_cast<T*>(impl_->get(key));
}

template <class T>
const T* Map<T>::get(const char* key) const {
    return static_cast<const T*>(impl_->get(key));
}

template <class T>
T* Map<T>::add(const char* key, const T& item) {
    return static_cast<T*>(impl_->add(key, item));
}

template <class T>
T* Map<T>::add(const char* key) {
    return static_cast<T*>(impl_->add(key));
}

template <class T>
ErrorValue Map<T>::remove(const char* key) {
    return impl_->remove(key);
}

template <class T>
Iterator<T> Map<T>::remove(const Iterator<T>& position) {
    if (impl_ == nullptr) {
        return Iterator<T>();
    }
    MapImpl<T>& impl = impl_of<T>(impl_);
    if (impl.elements.empty() || !impl.owns(position.impl_) || position == impl.end_iterator) {
        return impl.end_iterator;
    }
    return impl.iterator_at(impl.erase(MapImpl<T>::position_of(position.impl_)));
}

template <class T>
ErrorValue Map<T>::clear() {
    return impl_->clear();
}

template <class T>
ErrorValue Map<T>::reserve(std::size_t count) {
    return impl_->reserve(count);
}

#define QUORVANE_INSTANTIATE_MAP(T)     \
    template class QUORVANE_API Map<T>; \
    template class MapImpl<T>;

QUORVANE_FOR_EACH_ELEMENT_TYPE(QUORVANE_INSTANTIATE_MAP)

}  // namespace Quorvane
