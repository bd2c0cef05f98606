// The four iterator handles, compiled for every element type. Each owns one implementation;
// copies clone it, so the handle can be passed around by value like a plain iterator.

#include <cstdint>
#include <functional>
#include <utility>

#include "protocol/map.h"
#include "protocol/vector.h"

namespace Quorvane {
namespace {

template <class T>
const VectorIteratorBase<T>& vector_fields(const IIterator* impl) {
    return *static_cast<const VectorIteratorBase<T>*>(impl);
}

template <class T>
const MapIteratorBase<T>& map_fields(const IIterator* impl) {
    return *static_cast<const MapIteratorBase<T>*>(impl);
}

// A new implementation of class Impl on the same place as `impl`.
template <class Impl, class T>
IIterator* clone_vector_position(const IIterator* impl) {
    const VectorIteratorBase<T>& from = vector_fields<T>(impl);
    return new Impl(from.container, from.position);
}

template <class Impl, class T>
IIterator* clone_map_position(const IIterator* impl) {
    const MapIteratorBase<T>& from = map_fields<T>(impl);
    return new Impl(from.position, from.container);
}

// Positions in address order; false when `other` holds nothing.
template <class T, class Compare>
bool vector_order(const IIterator* impl, const IIterator* other, Compare compare) {
    if (other == nullptr) {
        return false;
    }
    return compare(reinterpret_cast<std::uintptr_t>(vector_fields<T>(impl).position),
                   reinterpret_cast<std::uintptr_t>(vector_fields<T>(other).position));
}

}  // namespace

IIterator::~IIterator() = default;

// ---- VectorIterator -----------------------------------------------------------------------

template <class T>
VectorIterator<T>::VectorIterator() : impl_(nullptr) {}

template <class T>
VectorIterator<T>::VectorIterator(IIterator* impl) : impl_(impl) {}

template <class T>
VectorIterator<T>::VectorIterator(const VectorIterator& other)
    : impl_(clone_vector_position<VectorIteratorImpl<T>, T>(other.impl_)) {}

template <class T>
VectorIterator<T>& VectorIterator<T>::operator=(VectorIterator other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
VectorIterator<T>::~VectorIterator() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
bool VectorIterator<T>::operator==(const VectorIterator& other) const {
    return other.impl_->compare(impl_);
}

template <class T>
bool VectorIterator<T>::operator!=(const VectorIterator& other) const {
    return !(*this == other);
}

template <class T>
VectorIterator<T>& VectorIterator<T>::operator++() {
    impl_->Next(1);
    return *this;
}

template <class T>
VectorIterator<T> VectorIterator<T>::operator++(int) {
    VectorIterator before(*this);
    impl_->Next(1);
    return before;
}

template <class T>
VectorIterator<T>& VectorIterator<T>::operator--() {
    impl_->Prev(1);
    return *this;
}

template <class T>
VectorIterator<T> VectorIterator<T>::operator--(int) {
    VectorIterator before(*this);
    impl_->Prev(1);
    return before;
}

template <class T>
VectorIterator<T>& VectorIterator<T>::operator+=(std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *this;
}

template <class T>
VectorIterator<T>& VectorIterator<T>::operator-=(std::size_t count) {
    impl_->Prev(static_cast<long>(count));
    return *this;
}

template <class T>
VectorIterator<T> VectorIterator<T>::operator+(std::size_t count) const {
    VectorIterator moved(*this);
    moved.impl_->Next(static_cast<long>(count));
    return moved;
}

template <class T>
VectorIterator<T> VectorIterator<T>::operator-(std::size_t count) const {
    VectorIterator moved(*this);
    moved.impl_->Prev(static_cast<long>(count));
    return moved;
}

template <class T>
long VectorIterator<T>::operator-(const VectorIterator& other) const {
    return vector_fields<T>(impl_).distance(vector_fields<T>(other.impl_));
}

template <class T>
bool VectorIterator<T>::operator<(const VectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::less<>());
}

template <class T>
bool VectorIterator<T>::operator>(const VectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::greater<>());
}

template <class T>
bool VectorIterator<T>::operator<=(const VectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::less_equal<>());
}

template <class T>
bool VectorIterator<T>::operator>=(const VectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::greater_equal<>());
}

template <class T>
T& VectorIterator<T>::operator[](std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *static_cast<T*>(impl_->Current());
}

template <class T>
T* VectorIterator<T>::operator->() const {
    return static_cast<T*>(impl_->Current());
}

template <class T>
T& VectorIterator<T>::operator*() const {
    return *static_cast<T*>(impl_->Current());
}

template <class T>
const char* VectorIterator<T>::name() const {
    return impl_->name();
}

// ---- ConstVectorIterator ------------------------------------------------------------------

template <class T>
ConstVectorIterator<T>::ConstVectorIterator() : impl_(nullptr) {}

template <class T>
ConstVectorIterator<T>::ConstVectorIterator(IIterator* impl) : impl_(impl) {}

template <class T>
ConstVectorIterator<T>::ConstVectorIterator(const ConstVectorIterator& other)
    : impl_(clone_vector_position<ConstVectorIteratorImpl<T>, T>(other.impl_)) {}

template <class T>
ConstVectorIterator<T>::ConstVectorIterator(const VectorIterator<T>& other)
    : impl_(clone_vector_position<ConstVectorIteratorImpl<T>, T>(other.impl_)) {}

template <class T>
ConstVectorIterator<T>& ConstVectorIterator<T>::operator=(ConstVectorIterator other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
ConstVectorIterator<T>::~ConstVectorIterator() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
bool ConstVectorIterator<T>::operator==(const ConstVectorIterator& other) const {
    return other.impl_->compare(impl_);
}

template <class T>
bool ConstVectorIterator<T>::operator!=(const ConstVectorIterator& other) const {
    return !(*this == other);
}

template <class T>
ConstVectorIterator<T>& ConstVectorIterator<T>::operator++() {
    impl_->Next(1);
    return *this;
}

template <class T>
ConstVectorIterator<T> ConstVectorIterator<T>::operator++(int) {
    ConstVectorIterator before(*this);
    impl_->Next(1);
    return before;
}

template <class T>
ConstVectorIterator<T>& ConstVectorIterator<T>::operator--() {
    impl_->Prev(1);
    return *this;
}

template <class T>
ConstVectorIterator<T> ConstVectorIterator<T>::operator--(int) {
    ConstVectorIterator before(*this);
    impl_->Prev(1);
    return before;
}

template <class T>
ConstVectorIterator<T>& ConstVectorIterator<T>::operator+=(std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *this;
}

template <class T>
ConstVectorIterator<T>& ConstVectorIterator<T>::operator-=(std::size_t count) {
    impl_->Prev(static_cast<long>(count));
    return *this;
}

template <class T>
ConstVectorIterator<T> ConstVectorIterator<T>::operator+(std::size_t count) const {
    ConstVectorIterator moved(*this);
    moved.impl_->Next(static_cast<long>(count));
    return moved;
}

template <class T>
ConstVectorIterator<T> ConstVectorIterator<T>::operator-(std::size_t count) const {
    ConstVectorIterator moved(*this);
    moved.impl_->Prev(static_cast<long>(count));
    return moved;
}

template <class T>
long ConstVectorIterator<T>::operator-(const ConstVectorIterator& other) const {
    return vector_fields<T>(impl_).distance(vector_fields<T>(other.impl_));
}

template <class T>
bool ConstVectorIterator<T>::operator<(const ConstVectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::less<>());
}

template <class T>
bool ConstVectorIterator<T>::operator>(const ConstVectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::greater<>());
}

template <class T>
bool ConstVectorIterator<T>::operator<=(const ConstVectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::less_equal<>());
}

template <class T>
bool ConstVectorIterator<T>::operator>=(const ConstVectorIterator& other) const {
    return vector_order<T>(impl_, other.impl_, std::greater_equal<>());
}

template <class T>
const T& ConstVectorIterator<T>::operator[](std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *static_cast<const T*>(impl_->Current());
}

template <class T>
const T* ConstVectorIterator<T>::operator->() const {
    return static_cast<const T*>(static_cast<const IIterator*>(impl_)->Current());
}

template <class T>
const T& ConstVectorIterator<T>::operator*() const {
    return *operator->();
}

template <class T>
const char* ConstVectorIterator<T>::name() const {
    return impl_->name();
}

// ---- Iterator -----------------------------------------------------------------------------

template <class T>
Iterator<T>::Iterator() : impl_(nullptr) {}

template <class T>
Iterator<T>::Iterator(IIterator* impl) : impl_(impl) {}

template <class T>
Iterator<T>::Iterator(const Iterator& other)
    : impl_(clone_map_position<IteratorImpl<T>, T>(other.impl_)) {}

template <class T>
Iterator<T>& Iterator<T>::operator=(Iterator other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
Iterator<T>::~Iterator() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
bool Iterator<T>::operator==(const Iterator& other) const {
    return other.impl_->compare(impl_);
}

template <class T>
bool Iterator<T>::operator!=(const Iterator& other) const {
    return !(*this == other);
}

template <class T>
Iterator<T>& Iterator<T>::operator++() {
    impl_->Next(1);
    return *this;
}

template <class T>
Iterator<T> Iterator<T>::operator++(int) {
    Iterator before(*this);
    impl_->Next(1);
    return before;
}

template <class T>
Iterator<T>& Iterator<T>::operator--() {
    impl_->Prev(1);
    return *this;
}

template <class T>
Iterator<T> Iterator<T>::operator--(int) {
    Iterator before(*this);
    impl_->Prev(1);
    return before;
}

template <class T>
T& Iterator<T>::operator[](std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *static_cast<T*>(impl_->Current());
}

template <class T>
T* Iterator<T>::operator->() const {
    return static_cast<T*>(impl_->Current());
}

template <class T>
T& Iterator<T>::operator*() const {
    return *static_cast<T*>(impl_->Current());
}

template <class T>
const char* Iterator<T>::name() const {
    return impl_->name();
}

// ---- ConstIterator ------------------------------------------------------------------------

template <class T>
ConstIterator<T>::ConstIterator() : impl_(nullptr) {}

template <class T>
ConstIterator<T>::ConstIterator(IIterator* impl) : impl_(impl) {}

template <class T>
ConstIterator<T>::ConstIterator(const ConstIterator& other)
    : impl_(clone_map_position<ConstIteratorImpl<T>, T>(other.impl_)) {}

template <class T>
ConstIterator<T>::ConstIterator(const Iterator<T>& other)
    : impl_(clone_map_position<ConstIteratorImpl<T>, T>(other.impl_)) {}

template <class T>
ConstIterator<T>& ConstIterator<T>::operator=(ConstIterator other) {
    std::swap(impl_, other.impl_);
    return *this;
}

template <class T>
ConstIterator<T>::~ConstIterator() {
    delete impl_;
    impl_ = nullptr;
}

template <class T>
bool ConstIterator<T>::operator==(const ConstIterator& other) const {
    return other.impl_->compare(impl_);
}

template <class T>
bool ConstIterator<T>::operator!=(const ConstIterator& other) const {
    return !(*this == other);
}

template <class T>
ConstIterator<T>& ConstIterator<T>::operator++() {
    impl_->Next(1);
    return *this;
}

template <class T>
ConstIterator<T> ConstIterator<T>::operator++(int) {
    ConstIterator before(*this);
    impl_->Next(1);
    return before;
}

template <class T>
ConstIterator<T>& ConstIterator<T>::operator--() {
    impl_->Prev(1);
    return *this;
}

template <class T>
ConstIterator<T> ConstIterator<T>::operator--(int) {
    ConstIterator before(*this);
    impl_->Prev(1);
    return before;
}

template <class T>
const T& ConstIterator<T>::operator[](std::size_t count) {
    impl_->Next(static_cast<long>(count));
    return *static_cast<const T*>(impl_->Current());
}

template <class T>
const T* ConstIterator<T>::operator->() const {
    return static_cast<const T*>(static_cast<const IIterator*>(impl_)->Current());
}

template <class T>
const T& ConstIterator<T>::operator*() const {
    return *operator->();
}

template <class T>
const char* ConstIterator<T>::name() const {
    return impl_->name();
}

#define QUORVANE_INSTANTIATE_ITERATORS(T)  \
    template class QUORVANE_API VectorIterator<T>;      \
    template class QUORVANE_API ConstVectorIterator<T>; \
    template class QUORVANE_API Iterator<T>;            \
    template class QUORVANE_API ConstIterator<T>;

QUORVANE_FOR_EACH_ELEMENT_TYPE(QUORVANE_INSTANTIATE_ITERATORS)

}  // namespace Quorvane
