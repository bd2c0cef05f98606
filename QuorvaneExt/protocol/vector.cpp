// Vector<T>: the handle over VectorImpl<T>, compiled for every element type.

#include "protocol/vector.h"

namespace Quorvane {
namespace {

template <class T>
VectorImpl<T>& impl_of(IVector* impl) {
    return *static_cast<VectorImpl<T>*>(impl);
}

}  // namespace

IContainer::~IContainer() = default;

template <class T>
Vector<T>::Vector() : impl_(nullptr) {
    create();
}

template <class T>
Vector<T>::Vector(const Vector& other) : impl_(new VectorImpl<T>(impl_of<T>(other.impl_))) {}

template <class T>
Vector<T>& Vector<T>::operator=(Vector other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
Vector<T>::~Vector() {
    cleanup();
}

template <class T>
void Vector<T>::create() {
    IVector* fresh = new VectorImpl<T>;
    cleanup();
    impl_ = fresh;
}

template <class T>
void Vector<T>::cleanup() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
unsigned long Vector<T>::size() const {
    return impl_->size();
}

template <class T>
bool Vector<T>::empty() const {
    return impl_->empty();
}

template <class T>
VectorIterator<T> Vector<T>::begin() {
    return impl_of<T>(impl_).begin_iterator;
}

template <class T>
VectorIterator<T> Vector<T>::end() {
    return impl_of<T>(impl_).end_iterator;
}

template <class T>
ConstVectorIterator<T> Vector<T>::begin() const {
    return ConstVectorIterator<T>(impl_of<T>(impl_).begin_iterator);
}

template <class T>
ConstVectorIterator<T> Vector<T>::end() const {
    return ConstVectorIterator<T>(impl_of<T>(impl_).end_iterator);
}

template <class T>
VectorIterator<T> Vector<T>::insert(const VectorIterator<T>& position, const T& item) {
    VectorImpl<T>& impl = impl_of<T>(impl_);
    return impl.iterator_at(impl.insert(impl.index_of(position.impl_), item));
}

template <class T>
VectorIterator<T> Vector<T>::find(std::size_t index) {
    VectorImpl<T>& impl = impl_of<T>(impl_);
    return index < impl.elements.size() ? impl.iterator_at(index) : impl.end_iterator;
}

template <class T>
ConstVectorIterator<T> Vector<T>::find(std::size_t index) const {
    VectorImpl<T>& impl = impl_of<T>(impl_);
    return impl.const_iterator_at(index < impl.elements.size() ? index : impl.elements.size());
}

template <class T>
T* Vector<T>::get(std::size_t index) {
    return static_cast<T*>(impl_->get(index));
}

template <class T>
const T* Vector<T>::get(std::size_t index) const {
    return static_cast<const T*>(impl_->get(index));
}

template <class T>
T* Vector<T>::add(const T& item) {
    return impl_of<T>(impl_).append(item);
}

template <class T>
T* Vector<T>::add() {
    return static_cast<T*>(impl_->add());
}

template <class T>
T* Vector<T>::add(std::size_t index) {
    return static_cast<T*>(impl_->add(index));
}

template <class T>
ErrorValue Vector<T>::remove(std::size_t index) {
    return impl_->remove(index);
}

template <class T>
ErrorValue Vector<T>::remove(std::size_t first, std::size_t last) {
    return impl_->remove(first, last);
}

template <class T>
VectorIterator<T> Vector<T>::remove(const VectorIterator<T>& position) {
    if (impl_ == nullptr) {
        return VectorIterator<T>();
    }
    VectorImpl<T>& impl = impl_of<T>(impl_);
    if (impl.elements.empty() || position.impl_ == nullptr || position == impl.end_iterator) {
        return impl.end_iterator;
    }
    const std::size_t index = impl.index_of(position.impl_);
    if (impl.remove(index) != HMI_E_SUCCESS) {
        return impl.end_iterator;
    }
    return impl.iterator_at(index);
}

template <class T>
ErrorValue Vector<T>::clear() {
    return impl_->clear();
}

template <class T>
ErrorValue Vector<T>::reserve(std::size_t count) {
    return impl_->reserve(count);
}

#define QUORVANE_INSTANTIATE_VECTOR(T)     \
    template class QUORVANE_API Vector<T>; \
    template class VectorImpl<T>;

QUORVANE_FOR_EACH_ELEMENT_TYPE(QUORVANE_INSTANTIATE_VECTOR)

}  // namespace Quorvane
