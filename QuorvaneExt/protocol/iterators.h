#pragma once
// Private to the library: not part of the API.
//
// The implementations behind the four iterator handles, and the list of element types that the
// containers and iterators are compiled for.

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "QuorvaneExtApi.h"

// Every element type of Vector<T> and Map<T>. A new one joins by one line here (its class must
// be complete in QuorvaneExtApi.h); the containers, their implementations and all iterators are
// then compiled for it. Each explicit instantiation carries QUORVANE_API itself, because clang
// does not always pass the class template's visibility on to it.
#define QUORVANE_FOR_EACH_ELEMENT_TYPE(X) \
    X(String)                             \
    X(Command)                            \
    X(CommandGroup)                       \
    X(Value)

namespace Quorvane {

template <class T>
using VectorElements = std::vector<T>;

// std::less<> lets a lookup compare a string_view with the stored keys, so finding a key never
// builds a temporary string. The comparison of std::string is by unsigned byte, shorter first.
template <class T>
using MapElements = std::map<std::string, T, std::less<>>;

[[noreturn]] inline void throw_not_dereferenceable() {
    throw std::runtime_error("iterator not dereferrencable");
}

// Both vector iterators share their fields, so that positions of a const and a mutable iterator
// over one vector compare and subtract alike. Positions move as plain addresses: a step past
// either end only lands on a wrong place, which reading then rejects or misreads, but the step
// itself is well defined.
template <class T>
class VectorIteratorBase : public IIterator {
public:
    VectorIteratorBase(VectorImpl<T>* owner, T* at) : container(owner), position(at) {}

    const char* name() override { return ""; }
    void Next(long count) override { position = moved(position, count); }
    void Prev(long count) override {
        position = moved(position, static_cast<long>(0UL - static_cast<unsigned long>(count)));
    }
    const IObject* Current() const override { return element(); }
    bool compare(const IIterator* other) const override {
        if (other == nullptr) {
            return false;
        }
        const auto* that = static_cast<const VectorIteratorBase*>(other);
        return that->container != nullptr && position == that->position;
    }

    // Elements from `other` to this position.
    long distance(const VectorIteratorBase& other) const {
        const auto bytes = reinterpret_cast<std::uintptr_t>(position) -
                           reinterpret_cast<std::uintptr_t>(other.position);
        return static_cast<long>(bytes) / static_cast<long>(sizeof(T));
    }

    static T* moved(T* from, long count) {
        const auto step = static_cast<std::uintptr_t>(count) * sizeof(T);
        return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(from) + step);
    }

    VectorImpl<T>* container;
    T* position;

protected:
    T* element() const {
        if (container == nullptr || position == container->end_position()) {
            throw_not_dereferenceable();
        }
        return position;
    }
};

template <class T>
class VectorIteratorImpl : public VectorIteratorBase<T> {
public:
    using VectorIteratorBase<T>::VectorIteratorBase;
    using VectorIteratorBase<T>::Current;
    IObject* Current() override { return this->element(); }
};

template <class T>
class ConstVectorIteratorImpl : public VectorIteratorBase<T> {
public:
    using VectorIteratorBase<T>::VectorIteratorBase;
    using VectorIteratorBase<T>::Current;
    // A const iterator has no writable element.
    IObject* Current() override { return nullptr; }
};

template <class T>
class MapIteratorBase : public IIterator {
public:
    using Position = typename MapElements<T>::iterator;

    MapIteratorBase(Position at, MapImpl<T>* owner) : position(at), container(owner) {}

    const char* name() override { return node().first.c_str(); }
    // A tree has no place beyond its ends: a step on from the end can run in circles, and a step
    // back in an empty tree reads through a null link. Such a step is not taken, which also ends
    // a walk with a huge count once it reaches an end.
    void Next(long count) override {
        for (long step = 0; step < count && position != container->elements.end(); ++step) {
            ++position;
        }
    }
    void Prev(long count) override {
        for (long step = 0; step < count && position != container->elements.begin(); ++step) {
            --position;
        }
    }
    const IObject* Current() const override { return &node().second; }
    bool compare(const IIterator* other) const override {
        return other != nullptr && position == static_cast<const MapIteratorBase*>(other)->position;
    }

    Position position;
    MapImpl<T>* container;

protected:
    typename MapElements<T>::value_type& node() const {
        if (container == nullptr || position == container->elements.end()) {
            throw_not_dereferenceable();
        }
        return *position;
    }
};

template <class T>
class IteratorImpl : public MapIteratorBase<T> {
public:
    using MapIteratorBase<T>::MapIteratorBase;
    using MapIteratorBase<T>::Current;
    IObject* Current() override { return &this->node().second; }
};

template <class T>
class ConstIteratorImpl : public MapIteratorBase<T> {
public:
    using MapIteratorBase<T>::MapIteratorBase;
    using MapIteratorBase<T>::Current;
    IObject* Current() override { return nullptr; }
};

}  // namespace Quorvane
