// The four iterator handles, compiled for every element type. Each owns one implementation;
// copies clone it, so the handle can be passed around by value like a plain iterator.
//
// The four share most of their members word for word and differ only in their types, so those
// members are written once below as macros over the handle's name.

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

// A new implementation on the place of `impl`, of the class that the handle (named by the type
// of the first argument) owns.
template <class T>
IIterator* clone_for(const VectorIterator<T>*, const IIterator* impl) {
    return new VectorIteratorImpl<T>(vector_fields<T>(impl).container,
                                     vector_fields<T>(impl).position);
}

template <class T>
IIterator* clone_for(const ConstVectorIterator<T>*, const IIterator* impl) {
    return new ConstVectorIteratorImpl<T>(vector_fields<T>(impl).container,
                                          vector_fields<T>(impl).position);
}

template <class T>
IIterator* clone_for(const Iterator<T>*, const IIterator* impl) {
    return new IteratorImpl<T>(map_fields<T>(impl).position, map_fields<T>(impl).container);
}

template <class T>
IIterator* clone_for(const ConstIterator<T>*, const IIterator* impl) {
    return new ConstIteratorImpl<T>(map_fields<T>(impl).position, map_fields<T>(impl).container);
}

// Positions in address order; false when either handle holds nothing.
template <class T, class Compare>
bool vector_order(const IIterator* impl, const IIterator* other, Compare compare) {
    if (impl == nullptr || other == nullptr) {
        return false;
    }
    return compare(reinterpret_cast<std::uintptr_t>(vector_fields<T>(impl).position),
                   reinterpret_cast<std::uintptr_t>(vector_fields<T>(other).position));
}

}  // namespace

IIterator::~IIterator() = default;

// Ownership of the implementation, equality, single steps and the key, for every handle.
// Equality asks the right operand's implementation, so an empty left operand compares unequal.
#define QUORVANE_ITERATOR_HANDLE(Handle)                                            \
    template <class T>                                                              \
    Handle<T>::Handle() : impl_(nullptr) {}                                         \
                                                                                    \
    template <class T>                                                              \
    Handle<T>::Handle(IIterator* impl) : impl_(impl) {}                             \
                                                                                    \
    template <class T>                                                              \
    Handle<T>::Handle(const Handle& other) : impl_(clone_for(this, other.impl_)) {} \
                                                                                    \
    template <class T>                                                              \
    Handle<T>& Handle<T>::operator=(Handle other) {                                 \
        std::swap(impl_, other.impl_);                                              \
        return *this;                                                               \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    Handle<T>::~Handle() {                                                          \
        delete impl_;                                                               \
        impl_ = nullptr;                                                            \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    bool Handle<T>::operator==(const Handle& other) const {                         \
        return other.impl_->compare(impl_);                                         \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    bool Handle<T>::operator!=(const Handle& other) const {                         \
        return !(*this == other);                                                   \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    Handle<T>& Handle<T>::operator++() {                                            \
        impl_->Next(1);                                                             \
        return *this;                                                               \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    Handle<T> Handle<T>::operator++(int) {                                          \
        Handle before(*this);                                                       \
        impl_->Next(1);                                                             \
        return before;                                                              \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    Handle<T>& Handle<T>::operator--() {                                            \
        impl_->Prev(1);                                                             \
        return *this;                                                               \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    Handle<T> Handle<T>::operator--(int) {                                          \
        Handle before(*this);                                                       \
        impl_->Prev(1);                                                             \
        return before;                                                              \
    }                                                                               \
                                                                                    \
    template <class T>                                                              \
    const char* Handle<T>::name() const {                                           \
        return impl_->name();                                                       \
    }

// Element access of the writable handles, through the writable Current().
#define QUORVANE_WRITABLE_ACCESS(Handle)           \
    template <class T>                             \
    T& Handle<T>::operator[](std::size_t count) {  \
        impl_->Next(static_cast<long>(count));     \
        return *static_cast<T*>(impl_->Current()); \
    }                                              \
                                                   \
    template <class T>                             \
    T* Handle<T>::operator->() const {             \
        return static_cast<T*>(impl_->Current());  \
    }                                              \
                                                   \
    template <class T>                             \
    T& Handle<T>::operator*() const {              \
        return *operator->();                      \
    }

// Element access of the read-only handles: through the const Current(), except operator[],
// which keeps reading the writable one and so answers a null reference. The interface keeps
// that answer, so the sanitizer is told that this null reference is deliberate.
#define QUORVANE_READ_ONLY_ACCESS(Handle)                                                    \
    template <class T>                                                                       \
    __attribute__((no_sanitize("null"))) const T& Handle<T>::operator[](std::size_t count) { \
        impl_->Next(static_cast<long>(count));                                               \
        return *static_cast<const T*>(impl_->Current());                                     \
    }                                                                                        \
                                                                                             \
    template <class T>                                                                       \
    const T* Handle<T>::operator->() const {                                                 \
        return static_cast<const T*>(static_cast<const IIterator*>(impl_)->Current());       \
    }                                                                                        \
                                                                                             \
    template <class T>                                                                       \
    const T& Handle<T>::operator*() const {                                                  \
        return *operator->();                                                                \
    }

// Arithmetic and ordering of the two vector handles.
#define QUORVANE_VECTOR_ARITHMETIC(Handle)                                      \
    template <class T>                                                          \
    Handle<T>& Handle<T>::operator+=(std::size_t count) {                       \
        impl_->Next(static_cast<long>(count));                                  \
        return *this;                                                           \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    Handle<T>& Handle<T>::operator-=(std::size_t count) {                       \
        impl_->Prev(static_cast<long>(count));                                  \
        return *this;                                                           \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    Handle<T> Handle<T>::operator+(std::size_t count) const {                   \
        Handle moved(*this);                                                    \
        moved += count;                                                         \
        return moved;                                                           \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    Handle<T> Handle<T>::operator-(std::size_t count) const {                   \
        Handle moved(*this);                                                    \
        moved -= count;                                                         \
        return moved;                                                           \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    long Handle<T>::operator-(const Handle& other) const {                      \
        return vector_fields<T>(impl_).distance(vector_fields<T>(other.impl_)); \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    bool Handle<T>::operator<(const Handle& other) const {                      \
        return vector_order<T>(impl_, other.impl_, std::less<>());              \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    bool Handle<T>::operator>(const Handle& other) const {                      \
        return vector_order<T>(impl_, other.impl_, std::greater<>());           \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    bool Handle<T>::operator<=(const Handle& other) const {                     \
        return vector_order<T>(impl_, other.impl_, std::less_equal<>());        \
    }                                                                           \
                                                                                \
    template <class T>                                                          \
    bool Handle<T>::operator>=(const Handle& other) const {                     \
        return vector_order<T>(impl_, other.impl_, std::greater_equal<>());     \
    }

QUORVANE_ITERATOR_HANDLE(VectorIterator)
QUORVANE_WRITABLE_ACCESS(VectorIterator)
QUORVANE_VECTOR_ARITHMETIC(VectorIterator)

QUORVANE_ITERATOR_HANDLE(ConstVectorIterator)
QUORVANE_READ_ONLY_ACCESS(ConstVectorIterator)
QUORVANE_VECTOR_ARITHMETIC(ConstVectorIterator)

template <class T>
ConstVectorIterator<T>::ConstVectorIterator(const VectorIterator<T>& other)
    : impl_(clone_for(this, other.impl_)) {}

QUORVANE_ITERATOR_HANDLE(Iterator)
QUORVANE_WRITABLE_ACCESS(Iterator)

QUORVANE_ITERATOR_HANDLE(ConstIterator)
QUORVANE_READ_ONLY_ACCESS(ConstIterator)

template <class T>
ConstIterator<T>::ConstIterator(const Iterator<T>& other) : impl_(clone_for(this, other.impl_)) {}

#define QUORVANE_INSTANTIATE_ITERATORS(T)               \
    template class QUORVANE_API VectorIterator<T>;      \
    template class QUORVANE_API ConstVectorIterator<T>; \
    template class QUORVANE_API Iterator<T>;            \
    template class QUORVANE_API ConstIterator<T>;

QUORVANE_FOR_EACH_ELEMENT_TYPE(QUORVANE_INSTANTIATE_ITERATORS)

}  // namespace Quorvane
