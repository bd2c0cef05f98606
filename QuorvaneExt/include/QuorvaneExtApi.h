#pragma once
// The object model shared by host and extension, and the link through which the host hands the
// library its services.
//
// Every public object is a handle that owns one implementation object alone: copies are deep,
// assignment takes its argument by value and exchanges implementations, and nothing is shared or
// reference counted. No operation fails loudly: a miss answers a zero, an empty text or a shared
// empty object, and a write through a shared empty object is dropped. Allocation failure
// (std::bad_alloc) passes through every operation that allocates.

#include <cstddef>
#include <iterator>

#include "QuorvaneExtData.h"

namespace Quorvane {

class Value;

// ---------------------------------------------------------------------------------------------
// Allocation root
// ---------------------------------------------------------------------------------------------

// Root of the object model. Its allocation operators are functions of the library, so storage of
// an object created or destroyed by an extension's `new`/`delete` is always obtained and released
// inside the library, whichever module ran the expression.
class QUORVANE_API IObject {
public:
    virtual ~IObject();

    // Storage from the global allocation function; throws std::bad_alloc like it.
    static void* operator new(unsigned long size);
    // Placement form: returns `place`.
    static void* operator new(unsigned long size, void* place);
    // Returns the storage to the global release function.
    static void operator delete(void* pointer);
    // Placement form: does nothing.
    static void operator delete(void* pointer, void* place);
};

// ---------------------------------------------------------------------------------------------
// Host link
// ---------------------------------------------------------------------------------------------

// The host's own interface. Its operations are the host's to define (a host derives its service
// interface from it); the library only keeps the pointer and hands it back through host().
class QUORVANE_API IQuorvaneExtHost {
public:
    virtual ~IQuorvaneExtHost();
};

// The configuration source of the host, implemented by the same object as IQuorvaneExtHost.
// The library calls get_value exactly once per session language look-up, and nothing else.
// Everything is defined here, so host and library each carry the class's type record; the
// library finds the host's base by the type's name when it casts across.
class IDataProvider {
public:
    // Reads the configuration parameter `name` of `domain`. The library asks only for
    // ("DEFAULTLOCALE", "Quorvane", true) and destroys the returned value.
    virtual Value get_value(const char* name, const char* domain, bool flag) = 0;
    virtual ~IDataProvider() {}
};

// The host's first call into the library. A non-null host is stored (and seen as IDataProvider
// if it implements it, else the session language falls back to "en"); null changes nothing.
// Repeated calls only replace the pointers. The shared empty objects are created here, or at
// first use if this is never called; if one of them throws, the exception leaves this call and
// the next use tries again. The pointers are plain: this must have returned before another
// thread relies on host() or on the session language.
QUORVANE_API void initialize_api(IQuorvaneExtHost* host);

// The host given to the last initialize_api with a non-null argument; null before that.
QUORVANE_API IQuorvaneExtHost* host();

// ---------------------------------------------------------------------------------------------
// String
// ---------------------------------------------------------------------------------------------

class StringImpl;

// A handle around a text, empty by default. It has no shared empty and no comparison operators.
class QUORVANE_API String : public IObject {
public:
    String();
    // Copies the text; `text` must not be null.
    String(const char* text);
    String(const String& other);
    String& operator=(String other);
    ~String() override;

    // Exchanges the implementations; always true.
    bool swap(String& other);

    // The text, valid until this object is changed or destroyed.
    const char* name() const;
    // Replaces the text; `text` must not be null.
    void set_name(const char* text);
    // True for every live String, an empty one included.
    bool isset() const;

private:
    StringImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Time
// ---------------------------------------------------------------------------------------------

// A point in time: signed 64-bit nanoseconds since 1970-01-01T00:00:00Z (1677-09-21 to
// 2262-04-11), or since an arbitrary origin when it came from steady_now. Not an IObject: its
// one count lives in a heap cell of its own, so every copy allocates.
class QUORVANE_API Timestamp {
public:
    Timestamp();
    explicit Timestamp(long nanoseconds);
    Timestamp(const Timestamp& other);
    Timestamp& operator=(Timestamp other);
    virtual ~Timestamp();

    // Wall clock, truncated to the system's resolution of 100 ns.
    static Timestamp now();
    // Monotonic clock, not truncated; for measuring durations, never to be rendered as a date.
    static Timestamp steady_now();
    // Seconds since the epoch; negative seconds lie before it.
    static Timestamp from_unix_time(int seconds);
    // File-time ticks (100 ns since 1601-01-01). Everything up to the epoch, negative ticks
    // included, gives 0; ticks above 208678456368547758 wrap silently.
    static Timestamp from_file_time(long ticks);
    // Milliseconds since the epoch; overflow wraps.
    static Timestamp from_milliseconds(long milliseconds);

    // Signed division, truncating toward zero: -1.5 s gives -1.
    long seconds() const;
    long milliseconds() const;
    long nanoseconds() const;

    bool operator==(const Timestamp& other) const;
    bool operator!=(const Timestamp& other) const;

private:
    long* count_;
};

// A duration in signed 64-bit nanoseconds; a handle like Timestamp, with no shared empty.
class QUORVANE_API Timespan {
public:
    Timespan();
    explicit Timespan(long nanoseconds);
    Timespan(const Timespan& other);
    Timespan& operator=(Timespan other);
    virtual ~Timespan();

    // Signed division, truncating toward zero.
    long seconds() const;
    long milliseconds() const;
    long nanoseconds() const;

    bool operator==(const Timespan& other) const;
    bool operator!=(const Timespan& other) const;

private:
    long* count_;
};

// ---------------------------------------------------------------------------------------------
// Result values
// ---------------------------------------------------------------------------------------------

class ResultPairImpl;

// The result type of the system: an ErrorValue with a free text. An empty text is complete; the
// wording for people comes from get_error_string_pretty (helper/api_helper.h). A handle without a
// shared empty, so every setter writes. Only the allocation of the record or of a text can throw.
class QUORVANE_API ResultPair : public IObject {
public:
    // HMI_E_SUCCESS and an empty text.
    ResultPair();
    // The code and an empty text; implicit, so that a function can return a bare code.
    ResultPair(ErrorValue result);
    // The code and a copy of the text. A null text is a programming error: it ends the process.
    ResultPair(ErrorValue result, const char* text);
    ResultPair(const ResultPair& other);
    ResultPair& operator=(ResultPair other);
    ~ResultPair() override;

    // Exchanges the implementations; always true.
    bool swap(ResultPair& other);

    ErrorValue result() const;
    // The text, valid until this object is changed or destroyed.
    const char* text() const;
    // Replaces the code; the text stays.
    void set_result(ErrorValue result);
    // Replaces the text; the code stays. `text` must not be null.
    void set_text(const char* text);

    // Against a bare code only the codes count; the text is ignored.
    bool operator==(const ErrorValue& result) const;
    bool operator!=(const ErrorValue& result) const;
    // Against another pair both count: equal codes and byte-equal texts.
    bool operator==(const ResultPair& other) const;
    bool operator!=(const ResultPair& other) const;

private:
    ResultPairImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Containers and iterators
// ---------------------------------------------------------------------------------------------

// The walk over a container, behind every iterator handle. Elements are seen through their root
// class; the handles cast them back to the element type.
class QUORVANE_API IIterator {
public:
    // Map iterators: the key under the iterator, valid while the element lives; throws
    // std::runtime_error("iterator not dereferrencable") at the end. Vector iterators: always
    // the empty text, never throws.
    virtual const char* name() = 0;
    // Vector iterators move by `count` elements in either direction, unbounded by the vector (a
    // place beyond either end must not be read). Map iterators take `count` steps in key order and
    // ignore a count of 0 or below; a step beyond either end of the map is not taken.
    virtual void Next(long count) = 0;
    virtual void Prev(long count) = 0;
    // The element under the iterator; throws std::runtime_error("iterator not dereferrencable")
    // at the end. The const iterators answer null here and give their element only through the
    // const form.
    virtual IObject* Current() = 0;
    virtual const IObject* Current() const = 0;
    // True when both stand on the same place; false for null.
    virtual bool compare(const IIterator* other) const = 0;
    virtual ~IIterator();
};

// What every container answers.
class QUORVANE_API IContainer {
public:
    // Constant time.
    virtual unsigned long size() const = 0;
    virtual bool empty() const = 0;
    // A sequence grows its capacity and gives 0; a keyed collection has no capacity and gives
    // HMI_E_NOT_IMPLEMENTED.
    virtual ErrorValue reserve(std::size_t count) = 0;
    // Destroys every element; gives 0.
    virtual ErrorValue clear() = 0;
    virtual ~IContainer();
};

// An ordered sequence. The IObject arguments must be of the container's element type; they are
// taken for it without a check. Element pointers are invalidated by any growth or erase.
class QUORVANE_API IVector : public IContainer {
public:
    // Appends a copy of `item`.
    virtual IObject* add(const IObject& item) = 0;
    // The element at `index`, or else a new default element appended at the end.
    virtual IObject* add(std::size_t index) = 0;
    // Appends a default element.
    virtual IObject* add() = 0;
    // Null when `index` is not below the size.
    virtual IObject* get(std::size_t index) = 0;
    // HMI_E_ENTRY_NOT_FOUND when there is nothing to erase at `index`.
    virtual ErrorValue remove(std::size_t index) = 0;
    // Erases [first, last); `last` beyond the size is cut to it. HMI_E_ENTRY_NOT_FOUND when
    // `first` > `last`, the sequence is empty or `first` > size; an empty range gives 0.
    virtual ErrorValue remove(std::size_t first, std::size_t last) = 0;
};

// A keyed collection: unique, case-sensitive keys in plain byte order ("B" before "a").
// Element pointers stay valid until their own element is erased or the collection cleared.
class QUORVANE_API IList : public IContainer {
public:
    // HMI_E_ENTRY_NOT_FOUND for a missing key. A null key ends the process.
    virtual ErrorValue remove(const char* key) = 0;
    // Stores a copy of `item` under `key`, replacing an existing element. Null key: null result.
    virtual IObject* add(const char* key, const IObject& item) = 0;
    // The element of `key`, a new default one if the key is new. Null key: null result.
    virtual IObject* add(const char* key) = 0;
    // Null for a missing key. A null key ends the process.
    virtual IObject* get(const char* key) = 0;
};

template <class T>
class Vector;
template <class T>
class Map;
template <class T>
class VectorImpl;
template <class T>
class MapImpl;
template <class T>
class ConstVectorIterator;
template <class T>
class ConstIterator;

// The element types are the library's own object classes (String, Value, and the request and
// diagnostic objects), which copy deeply and swap their implementations. The members of the
// containers and iterators are compiled into the library for exactly these; any other T fails
// to link.
//
// Iterators of both containers: each handle owns one small implementation object, so every copy
// (postfix ++/--, + and -, begin(), end(), find()) allocates once; prefix ++/-- does not. A
// default-constructed handle holds nothing: it may only be assigned to, destroyed, be the left
// operand of == (which then gives false) or an operand of <, >, <= and >= (false). A vector
// iterator moved past either end is not detected and must not be read; a map iterator does not
// step beyond either end. Dereferencing at the end throws
// std::runtime_error("iterator not dereferrencable"), the one exception of the object model.

// Writable position in a Vector<T>, with random-access arithmetic.
template <class T>
class QUORVANE_API VectorIterator {
public:
    VectorIterator();
    VectorIterator(const VectorIterator& other);
    VectorIterator& operator=(VectorIterator other);
    ~VectorIterator();

    // Same place. `other` must hold an implementation.
    bool operator==(const VectorIterator& other) const;
    bool operator!=(const VectorIterator& other) const;

    VectorIterator& operator++();
    VectorIterator operator++(int);
    VectorIterator& operator--();
    VectorIterator operator--(int);
    VectorIterator& operator+=(std::size_t count);
    VectorIterator& operator-=(std::size_t count);
    VectorIterator operator+(std::size_t count) const;
    VectorIterator operator-(std::size_t count) const;
    // Distance in elements, this position less the other's.
    long operator-(const VectorIterator& other) const;

    // Order of the positions; false when either operand holds nothing.
    bool operator<(const VectorIterator& other) const;
    bool operator>(const VectorIterator& other) const;
    bool operator<=(const VectorIterator& other) const;
    bool operator>=(const VectorIterator& other) const;

    // Moves this iterator by `count` and reads the element there; the iterator stays moved.
    T& operator[](std::size_t count);
    T* operator->() const;
    T& operator*() const;

    // Elements of a vector have no key: always the empty text, also at the end; never throws.
    const char* name() const;

private:
    friend class VectorImpl<T>;
    friend class Vector<T>;
    friend class ConstVectorIterator<T>;
    QUORVANE_HIDDEN explicit VectorIterator(IIterator* impl);

    IIterator* impl_;
};

// Read-only position in a Vector<T>; made from a VectorIterator, never the other way round.
template <class T>
class QUORVANE_API ConstVectorIterator {
public:
    ConstVectorIterator();
    ConstVectorIterator(const ConstVectorIterator& other);
    ConstVectorIterator(const VectorIterator<T>& other);
    ConstVectorIterator& operator=(ConstVectorIterator other);
    ~ConstVectorIterator();

    bool operator==(const ConstVectorIterator& other) const;
    bool operator!=(const ConstVectorIterator& other) const;

    ConstVectorIterator& operator++();
    ConstVectorIterator operator++(int);
    ConstVectorIterator& operator--();
    ConstVectorIterator operator--(int);
    ConstVectorIterator& operator+=(std::size_t count);
    ConstVectorIterator& operator-=(std::size_t count);
    ConstVectorIterator operator+(std::size_t count) const;
    ConstVectorIterator operator-(std::size_t count) const;
    long operator-(const ConstVectorIterator& other) const;

    bool operator<(const ConstVectorIterator& other) const;
    bool operator>(const ConstVectorIterator& other) const;
    bool operator<=(const ConstVectorIterator& other) const;
    bool operator>=(const ConstVectorIterator& other) const;

    // Kept for compatibility and never to be called: it moves the iterator and then answers a
    // null reference, because a const iterator has no writable element to give.
    const T& operator[](std::size_t count);
    const T* operator->() const;
    const T& operator*() const;

    // Always the empty text; never throws.
    const char* name() const;

private:
    friend class VectorImpl<T>;
    friend class Vector<T>;
    QUORVANE_HIDDEN explicit ConstVectorIterator(IIterator* impl);

    IIterator* impl_;
};

// Writable position in a Map<T>, walking in key order.
template <class T>
class QUORVANE_API Iterator {
public:
    Iterator();
    Iterator(const Iterator& other);
    Iterator& operator=(Iterator other);
    ~Iterator();

    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

    Iterator& operator++();
    Iterator operator++(int);
    Iterator& operator--();
    Iterator operator--(int);

    // Takes `count` steps and reads the element there; the iterator stays moved. A count that
    // reads as negative takes no step.
    T& operator[](std::size_t count);
    T* operator->() const;
    T& operator*() const;

    // The key under the iterator, valid while the element lives; throws at the end.
    const char* name() const;

private:
    friend class MapImpl<T>;
    friend class Map<T>;
    friend class ConstIterator<T>;
    QUORVANE_HIDDEN explicit Iterator(IIterator* impl);

    IIterator* impl_;
};

// Read-only position in a Map<T>; made from an Iterator, never the other way round.
template <class T>
class QUORVANE_API ConstIterator {
public:
    ConstIterator();
    ConstIterator(const ConstIterator& other);
    ConstIterator(const Iterator<T>& other);
    ConstIterator& operator=(ConstIterator other);
    ~ConstIterator();

    bool operator==(const ConstIterator& other) const;
    bool operator!=(const ConstIterator& other) const;

    ConstIterator& operator++();
    ConstIterator operator++(int);
    ConstIterator& operator--();
    ConstIterator operator--(int);

    // Kept for compatibility and never to be called: it moves the iterator and then answers a
    // null reference.
    const T& operator[](std::size_t count);
    const T* operator->() const;
    const T& operator*() const;

    // The key under the iterator, valid while the element lives; throws at the end.
    const char* name() const;

private:
    friend class MapImpl<T>;
    friend class Map<T>;
    QUORVANE_HIDDEN explicit ConstIterator(IIterator* impl);

    IIterator* impl_;
};

// An ordered sequence of T held by value; copies are deep. Any growth, reserve or erase
// invalidates outstanding iterators and element pointers (not detected); a fresh begin() or
// end() is always right. After cleanup() only create(), cleanup() and remove(position), which
// then erases nothing and gives an empty handle, are allowed.
template <class T>
class QUORVANE_API Vector {
public:
    Vector();
    Vector(const Vector& other);
    // Exchanges the implementations with the argument, whose old content dies with it.
    Vector& operator=(Vector other);
    ~Vector();

    // Replaces the content by a new, empty implementation.
    void create();
    // Destroys the implementation; a second call does nothing.
    void cleanup();

    // Constant time.
    unsigned long size() const;
    bool empty() const;

    VectorIterator<T> begin();
    VectorIterator<T> end();
    ConstVectorIterator<T> begin() const;
    ConstVectorIterator<T> end() const;

    // Inserts a copy of `item` before `position` and returns an iterator on it. The end
    // position appends, and so do an empty handle and a position of another vector.
    VectorIterator<T> insert(const VectorIterator<T>& position, const T& item);
    // The element at `index`, or the end position when `index` is not below the size.
    VectorIterator<T> find(std::size_t index);
    ConstVectorIterator<T> find(std::size_t index) const;
    // The element at `index`, or null. Constant time.
    T* get(std::size_t index);
    const T* get(std::size_t index) const;

    // Appends a copy of `item`; gives the new element.
    T* add(const T& item);
    // Appends a default element.
    T* add();
    // The element at `index` if there is one; otherwise a default element appended at the end
    // (at the size, not at `index`).
    T* add(std::size_t index);

    // HMI_E_ENTRY_NOT_FOUND when `index` is not below the size.
    ErrorValue remove(std::size_t index);
    // Erases [first, last); `last` beyond the size is cut to it. HMI_E_ENTRY_NOT_FOUND when
    // `first` > `last`, the vector is empty or `first` > size; an empty range erases nothing
    // and gives 0.
    ErrorValue remove(std::size_t first, std::size_t last);
    // Erases the element under `position` and gives an iterator on the one that followed. At
    // the end position, on an empty vector, and for an empty handle or a position of another
    // vector, nothing is erased and the end is returned.
    VectorIterator<T> remove(const VectorIterator<T>& position);
    // Destroys every element and keeps the capacity; gives 0.
    ErrorValue clear();
    // Grows the capacity to at least `count`; gives 0.
    ErrorValue reserve(std::size_t count);

private:
    IVector* impl_;
};

// Elements of T under unique, case-sensitive text keys, kept and walked in plain byte order of
// the keys ("B" before "a"); copies are deep. Lookups by key take logarithmic time and make no
// temporary text. Iterators and element pointers stay valid until their own element is erased;
// clear() invalidates all of them. After cleanup() only create(), cleanup() and
// remove(position), which then erases nothing and gives an empty handle, are allowed. A null key to
// find, get, remove, insert or insert_or_update ends the process.
template <class T>
class QUORVANE_API Map {
public:
    Map();
    Map(const Map& other);
    Map& operator=(Map other);
    ~Map();

    void create();
    void cleanup();

    unsigned long size() const;
    bool empty() const;

    Iterator<T> begin();
    Iterator<T> end();
    ConstIterator<T> begin() const;
    ConstIterator<T> end() const;

    // Adds the pair if `key` is new; an existing element keeps its value. The iterator stands
    // on the element of `key` either way.
    Iterator<T> insert(const char* key, const T& item);
    // As insert, but an existing element is overwritten with a copy of `item`.
    Iterator<T> insert_or_update(const char* key, const T& item);
    // The element of `key`, or the end position.
    Iterator<T> find(const char* key);
    ConstIterator<T> find(const char* key) const;
    // The element of `key`, or null.
    T* get(const char* key);
    const T* get(const char* key) const;

    // As insert_or_update, giving the element. A null key gives null and changes nothing.
    T* add(const char* key, const T& item);
    // The element of `key`, a new default one if the key is new. A null key gives null.
    T* add(const char* key);

    // HMI_E_ENTRY_NOT_FOUND when `key` is missing.
    ErrorValue remove(const char* key);
    // Erases the element under `position` and gives an iterator on the next one in key order.
    // At the end position, on an empty map, and for an empty handle or a position of another
    // map, nothing is erased and the end is returned.
    Iterator<T> remove(const Iterator<T>& position);
    // Destroys every element; gives 0.
    ErrorValue clear();
    // A map has no capacity: does nothing and gives HMI_E_NOT_IMPLEMENTED.
    ErrorValue reserve(std::size_t count);

private:
    IList* impl_;
};

// ---------------------------------------------------------------------------------------------
// Value
// ---------------------------------------------------------------------------------------------

class ValueImpl;

// Iterator traits of a forward iterator over Value; adds no members.
struct ValueIteratorTraits {
    using iterator_category = std::forward_iterator_tag;
    using value_type = Value;
    using difference_type = long;
    using pointer = Value*;
    using reference = Value&;
};

// The dynamic value of the boundary. A value has a kind and a storage that are kept apart; after
// a retagging they may disagree, so every read checks both and answers the zero of its result
// type when either does not fit. Reads never convert and never fail.
//
// The guard: every mutating operation first compares this value's implementation with that of
// the process-wide shared empty value (what a miss returns) and does nothing when they are the
// same, so a write through a miss is dropped. operator=(Binary) and swap have no guard.
class QUORVANE_API Value : public IObject, public ValueIteratorTraits {
public:
    Value();
    Value(const Value& other);
    // A null text leaves a Null.
    Value(const char* text);
    Value(bool flag);
    Value(int number);
    Value(long number);
    Value(double number);
    Value(Timestamp time);
    Value(Timespan span);
    // A Binary with bytes null but size not 0 leaves a Null.
    Value(Binary bytes);
    ~Value() override;

    // Under the guard nothing happens; otherwise the implementations are exchanged.
    Value& operator=(Value other);
    Value& operator=(const char* text);
    Value& operator=(bool flag);
    Value& operator=(int number);
    Value& operator=(long number);
    Value& operator=(double number);
    Value& operator=(Timestamp time);
    Value& operator=(Timespan span);
    // Without the guard: this writes even through the shared empty value.
    Value& operator=(Binary bytes);

    // Each set replaces kind and content, whatever the kind was; under the guard it does
    // nothing. A null text, and a Binary with bytes null but size not 0, change nothing; a Binary
    // of size 0 empties the value and makes it Binary. Text and bytes are copied, and may come
    // from this value itself.
    void set(const char* text);
    void set(bool flag);
    void set(int number);
    void set(long number);
    void set(double number);
    void set(const Timestamp& time);
    void set(const Timespan& span);
    void set(Binary bytes);

    // Exchanges the implementations without the guard; always true.
    bool swap(Value& other);

    ValueType type() const;
    // True when the kind is not Null.
    bool isset() const;
    // Declares a new kind, keeping the content only where the storage already fits. Bool,
    // Double, Int64, DateTime, TimeSpan, Any and numbers that name no kind only retag, so kind
    // and storage may disagree afterwards. Nothing happens under the guard or when the kind is
    // already `type`.
    Value& set_type(ValueType type);
    // Carries the content over to `type` where it can; otherwise leaves the value as it was.
    // Nothing happens under the guard. The caller reads type() to see what happened.
    Value& convert(ValueType type);

    // Bool: true when the stored number is 1. Otherwise false (Int 1 included).
    bool get_bool() const;
    // Int and Double: truncated toward zero; outside the 32-bit range and NaN give -2147483648.
    // Otherwise 0 (Bool and Int64 included).
    int get_int32() const;
    // Int64, DateTime, TimeSpan: the stored number. Otherwise 0 (Int included).
    long get_int64() const;
    // Bool, Int, Double (and an Int64 whose storage is still a double): the stored double.
    // Otherwise 0.0 (DateTime and TimeSpan included).
    double get_double() const;
    // Whatever the kind, when the storage holds text or bytes, at least one: a pointer to the
    // first of them inside this value (not NUL-terminated for Binary). Otherwise a static empty
    // text; never null. Valid until the value is changed or destroyed.
    const char* get_string() const;
    // Binary: size and first byte (null when empty), pointing into this value and valid until
    // it is changed or destroyed. Otherwise {0, null}.
    Binary get_binary();
    Binary get_binary() const;
    // DateTime: its time. Otherwise Timestamp().
    Timestamp get_timestamp() const;
    // TimeSpan: its span. Otherwise Timespan().
    Timespan get_timespan() const;

    // Synonyms of the reads above: no guard, no conversion, never a failure.
    operator bool() const;
    operator int() const;
    operator long() const;
    operator double() const;
    operator const char*() const;
    operator Timestamp() const;
    operator Timespan() const;
    operator Binary() const;

    // ---- as a container ------------------------------------------------------------------
    //
    // A Vector value holds a Vector<Value>, a Map or Struct value a Map<Value>. Indexing never
    // creates an element and never changes the kind: a miss, a wrong kind or the shared empty
    // value answers the shared empty value, so chains of [] by key and number never fail and a
    // write at their end is dropped. Only three operations turn a Null into a container: a keyed
    // insert (Struct), operator<< and resize (Vector). An Any counts only for get_map,
    // get_vector and size; everything else here wants the exact kind.

    // Map, Struct, or an Any holding a map: the map inside this value. Otherwise, and for the
    // shared empty value, null. Valid until the value is changed.
    Map<Value>* get_map();
    const Map<Value>* get_map() const;
    // Vector, or an Any holding a vector: the vector inside this value. Otherwise null; the
    // non-const form also answers null for the shared empty value.
    Vector<Value>* get_vector();
    const Vector<Value>* get_vector() const;

    // An element found by the operators [] stays valid as long as its container keeps it: in a
    // Vector until the vector grows or erases, in a Map or Struct until the element is erased.
    //
    // Vector: the element at `index`; anything else the shared empty value. No allocation.
    Value& operator[](unsigned long index);
    const Value& operator[](unsigned long index) const;
    // As above; a negative index misses.
    Value& operator[](int index);
    const Value& operator[](int index) const;
    // Map or Struct: the element of `key`; anything else the shared empty value. A null key on
    // a Map or Struct ends the process.
    Value& operator[](const char* key);
    const Value& operator[](const char* key) const;

    // Null becomes Vector first. Vector: appends a copy of `item`. Other kinds and the shared
    // empty value: nothing.
    Value& operator<<(const Value& item);
    // Null becomes Vector first. Vector: cuts the elements from `count` on, or appends copies
    // of `fill` up to `count`. Other kinds and the shared empty value: nothing.
    void resize(unsigned long count, const Value& fill);

    // Null becomes Struct first. Map or Struct: adds a copy of `item` under `key` unless the key
    // exists, which keeps its element; the iterator stands on the element of `key`. Other kinds
    // and the shared empty value: the end of an always-empty map, equal to end(). A null key
    // ends the process unless the value is of another kind or the shared empty value.
    Iterator<Value> insert(const char* key, const Value& item);
    Iterator<Value> insert(const char* key, const char* item);
    // As insert, but an existing element is overwritten.
    Iterator<Value> insert_or_update(const char* key, const Value& item);
    Iterator<Value> insert_or_update(const char* key, const char* item);
    // Vector: inserts a copy of `item` before `position` and gives an iterator on it. Any other
    // kind (Null included) and the shared empty value: the end of an always-empty vector, equal
    // to end_vector().
    VectorIterator<Value> insert(const VectorIterator<Value>& position, const Value& item);
    // The same for an item that becomes a Value of its own kind: T is one of bool (Bool), int
    // (Int), long (Int64), double (Double), const char* (String), Binary, Timestamp (DateTime),
    // Timespan (TimeSpan) or Value. Only the Value forms refuse the shared empty value; the
    // others write even through it, so never insert through a miss with them.
    template <class T>
    Iterator<Value> insert(const char* key, const T& item);
    template <class T>
    Iterator<Value> insert_or_update(const char* key, const T& item);
    template <class T>
    VectorIterator<Value> insert(const VectorIterator<Value>& position, const T& item);
    // A text item at a position; like the template forms, without the guard.
    VectorIterator<Value> insert(const VectorIterator<Value>& position, const char* item);

    // Vector: as Vector::remove (HMI_E_ENTRY_NOT_FOUND for a bad index or range). Other kinds
    // and the shared empty value: HMI_E_INVALID_TYPE.
    ErrorValue remove(unsigned long index);
    ErrorValue remove(unsigned long first, unsigned long last);
    // Map or Struct: erases the element and gives the next one in key order (see Map::remove).
    // Otherwise end().
    Iterator<Value> remove(const Iterator<Value>& position);
    // Vector: erases the element and gives the one that followed (see Vector::remove).
    // Otherwise end_vector().
    VectorIterator<Value> remove(const VectorIterator<Value>& position);
    // Map, Struct, Vector: removes every entry; Binary: drops the bytes. The kind stays. Other
    // kinds (String included) and the shared empty value: nothing.
    void clear();
    // Vector: grows the capacity. Otherwise nothing.
    void reserve(unsigned long count);

    // String: the text's length; Binary: the byte count; Vector, Map, Struct, and an Any
    // holding either: the element count. Otherwise, and for the shared empty value, 0.
    unsigned long size() const;
    // String, Vector, Map, Struct: size() is 0. Other kinds: the kind is Null, so an empty
    // Binary or an Int 0 is not empty. True for the shared empty value.
    bool empty() const;

    // Map or Struct: its iterators and key lookup (find gives end() on a miss; a null key ends
    // the process). Every other kind, an Any included, and the shared empty value: the end of
    // an always-empty map, so begin() == end() and a loop ends at once. Each call allocates one
    // iterator.
    Iterator<Value> begin();
    Iterator<Value> end();
    ConstIterator<Value> begin() const;
    ConstIterator<Value> end() const;
    Iterator<Value> find(const char* key);
    ConstIterator<Value> find(const char* key) const;
    // Vector: its iterators and index lookup (find gives end_vector() past the size). Every
    // other kind and the shared empty value: the end of an always-empty vector.
    VectorIterator<Value> begin_vector();
    VectorIterator<Value> end_vector();
    ConstVectorIterator<Value> begin_vector() const;
    ConstVectorIterator<Value> end_vector() const;
    VectorIterator<Value> find(unsigned long index);
    ConstVectorIterator<Value> find(unsigned long index) const;

private:
    // True when this handle is the shared empty value.
    QUORVANE_HIDDEN bool guarded() const;
    // The vector or map of this value when it has exactly that kind and is not the shared
    // empty value; else null.
    QUORVANE_HIDDEN Vector<Value>* own_vector() const;
    QUORVANE_HIDDEN Map<Value>* own_map() const;

    ValueImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Session and Context
// ---------------------------------------------------------------------------------------------

class SessionImpl;
class ContextImpl;

// The kind of request a Context describes. Only the host and the extensions give the numbers a
// meaning; the library stores, copies and compares them. A new Context carries 1.
enum RequestType : std::int32_t {
    REQUEST_TYPE_DEFAULT = 1,
};

// The kind of endpoint a client came through. Only the host gives the numbers a meaning; a new
// Session carries 0.
enum EndpointInfo : std::uint8_t {
    ENDPOINT_INFO_DEFAULT = 0,
};

// The client of a call: identifier, user, language, socket and endpoint. Not an IObject and
// without a shared empty; copies are deep and independent (a language cached by one copy is not
// seen by the others), assignment exchanges implementations. Setters have no guard. Text results
// stay valid until the session is changed, assigned to or destroyed. Null text arguments are
// precondition violations. Nothing reports an error; only allocation failures and an exception
// of the host's language read (see locale) pass through.
class QUORVANE_API Session {
public:
    // Empty texts, socket 0, endpoint 0.
    Session();
    Session(const Session& other);
    Session& operator=(Session other);
    virtual ~Session();

    // Equal when id, user, socket and endpoint are; the language takes no part.
    bool operator==(const Session& other) const;
    bool operator!=(const Session& other) const;

    const char* id() const;
    void set_id(const char* id);
    const char* user() const;
    void set_user(const char* user);

    // The effective language, never empty. With no stored language the host's "DEFAULTLOCALE"
    // (domain "Quorvane") is read and cached in this session, so later calls do not ask again;
    // an answer without text (a Null, a number, the empty text) leaves nothing stored, and the
    // host is asked again at the next call. A missing host, a host without IDataProvider, and a
    // stored or read "client" (exactly these six letters; it stays stored) all answer "en".
    // Const, yet it writes the cache, so concurrent calls on one session race unless a language
    // is stored or no host is linked. An exception of the host passes through and stores nothing.
    // The result lives as long as the stored text, or for ever when it is "en".
    const char* locale() const;
    // Stores the language as given; an empty text makes the next locale() ask the host again.
    void set_locale(const char* locale);

    unsigned int socket_id() const;
    void set_socket_id(unsigned int socket_id);
    EndpointInfo endpoint_info() const;
    void set_endpoint_info(EndpointInfo endpoint_info);

private:
    SessionImpl* impl_;
};

// One call: the addressed domain, the session that asks, the kind of request, and two numbers
// that only host and extensions interpret. Not an IObject and without a shared empty; copies
// are deep, the session included, and assignment exchanges implementations. Text results stay
// valid until the context is changed, assigned to or destroyed. Null text arguments are
// precondition violations. Nothing reports an error or throws, apart from allocation failures.
class QUORVANE_API Context {
public:
    // Default session, hash 0, subscription 0, request type 1, empty domain.
    Context();
    // The defaults, addressed to `domain`.
    Context(const char* domain);
    Context(const Context& other);
    Context& operator=(Context other);
    virtual ~Context();

    // Equal when sessions (see Session), hash, subscription, request type and domain (exact,
    // case-sensitive) are.
    bool operator==(const Context& other) const;
    bool operator!=(const Context& other) const;

    // The context's own session; valid until the context is assigned to or destroyed.
    Session& session();
    const Session& session() const;
    // Stores a deep copy of `session`.
    void set_session(const Session& session);

    const char* domain() const;
    void set_domain(const char* domain);
    RequestType request_type() const;
    void set_request_type(RequestType request_type);
    unsigned int hash() const;
    void set_hash(unsigned int hash);
    unsigned int subscription_id() const;
    void set_subscription_id(unsigned int subscription_id);

private:
    ContextImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Command and CommandGroup
// ---------------------------------------------------------------------------------------------

class CommandImpl;
class CommandGroupImpl;

// The host's bookkeeping bits of a command. The library knows three; the others belong to the
// host and are carried as they are.
enum InternalCommandOption : std::uint32_t {
    // The command changed in this request; Command::changed reads it.
    INTERNAL_COMMAND_CHANGED = 0x1,
    // The command was explicitly declared unchanged.
    INTERNAL_COMMAND_UNCHANGED = 0x1000,
    // Set in every new command; the library never tests or changes it.
    INTERNAL_COMMAND_DEFAULT_MARK = 0x40000,
    // The bits of a new command.
    INTERNAL_COMMAND_DEFAULT = 0x40001,
};

// Options of a command, agreed between host and extension; the library stores them and never
// reads them. A new command carries 0.
enum CommandOption : std::uint32_t {
    COMMAND_OPTION_NONE = 0,
};

// The host's bits of a request; stored for it, without effect in the library. A new request
// carries 0.
enum CommandGroupFlags : std::uint32_t {
    COMMAND_GROUP_FLAGS_NONE = 0,
};

// The host's state of a request; stored for it, without effect in the library. A new request
// carries 1.
enum MapperChangeState : std::int32_t {
    MAPPER_CHANGE_STATE_DEFAULT = 1,
};

// The host's face of a Command, reached through Command::mapper(): what an extension does not
// set. Plain accesses without the shared-empty check, so writes through the mapper of a miss do
// land in the shared object. The host calls these by position; the order is fixed.
class QUORVANE_API ICommandMapper {
public:
    // Stores the whole word; see InternalCommandOption.
    virtual void set_flags(InternalCommandOption flags) = 0;
    virtual InternalCommandOption flags() const = 0;
    // The host's own number; the library gives it no unit.
    virtual void set_last_sent(long last_sent) = 0;
    virtual long last_sent() const = 0;
    // Text setters copy; null is a precondition violation.
    virtual void set_path(const char* path) = 0;
    virtual void set_symbol_name(const char* symbol_name) = 0;
    // Valid until the command is changed or destroyed.
    virtual const char* symbol_name() const = 0;
    virtual void set_mapping(const char* mapping) = 0;
    virtual void set_domain(const char* domain) = 0;
    // A result other than the stored one marks the command changed (and withdraws an explicit
    // "unchanged"); the same result again touches no flag.
    virtual void set_result(ErrorValue result) = 0;
    virtual void set_hash(unsigned int hash) = 0;
    virtual unsigned int hash() const = 0;
    // Makes isset() false for good; the library does it only to its shared empty command.
    virtual void unset() = 0;
    // Stores a deep copy, making the symbol options present.
    virtual void set_symbol_options(const Value& symbol_options) = 0;
    virtual ~ICommandMapper();
};

// One operation of a request: a named symbol, the value written to it, the value read from it,
// its options and paging, and the outcome. The host fills it through mapper(); an extension
// reads it and answers with the read value, results and processing times.
//
// A miss (CommandGroup::operator[] past the end) answers the shared empty command, whose
// isset() is false. Its setters do nothing, its Value references are the shared empty value
// (where writes are dropped too), its processing times are 0 and it has neither paging nor
// symbol options. Its plain getters read its implementation, which answers the defaults unless
// the host wrote into it: mapper() reaches that implementation without protection, and writes
// through it land. Assignment has no such check: assigning to the shared empty command replaces
// its implementation, which then stays as inert as before. Copies are deep (all fields, flags
// and the presence of the optional members included); text results stay valid until the
// command is changed, assigned to or destroyed; null text arguments are precondition
// violations. Nothing reports an error or throws, apart from allocation failures.
class QUORVANE_API Command : public IObject {
public:
    // Empty texts, results 0, options 0, flags INTERNAL_COMMAND_DEFAULT, Null values, times 0,
    // no paging, no symbol options, isset() true.
    Command();
    // As above, named `name`.
    Command(const char* name);
    Command(const Command& other);
    // Exchanges implementations with the argument, without the shared-empty check.
    Command& operator=(Command other);
    ~Command() override;

    // Exchanges implementations, without any check; always true.
    bool swap(Command& other);

    // False only for the shared empty command and copies made of it.
    bool isset() const;

    // Equal when both are the same object or their names are equal byte for byte; nothing else
    // takes part.
    bool operator==(const Command& other) const;
    bool operator!=(const Command& other) const;

    // The host's face: the implementation itself, without protection (also for a miss). Valid
    // until the command is assigned to, swapped or destroyed.
    ICommandMapper* mapper();
    const ICommandMapper* mapper() const;

    const char* name() const;
    const char* domain() const;
    const char* mapping() const;
    const char* path() const;
    const char* customer_data() const;
    const char* result_string() const;
    ErrorValue result() const;
    unsigned int extension_result() const;
    CommandOption options() const;
    // Whether the INTERNAL_COMMAND_CHANGED bit is set; a new command is changed.
    bool changed() const;

    void set_name(const char* name);
    void set_customer_data(const char* customer_data);
    // Free text for the client; not derived from result().
    void set_result_string(const char* result_string);
    void set_extension_result(unsigned int extension_result);
    void set_options(CommandOption options);
    // Sets INTERNAL_COMMAND_CHANGED for true, INTERNAL_COMMAND_UNCHANGED for false, and clears
    // the other of the two; all other bits stay.
    void set_changed(bool changed);

    // References into the command, valid until it is assigned to, swapped or destroyed; the
    // shared empty value for a miss.
    Value& read_value();
    const Value& read_value() const;
    Value& write_value();
    const Value& write_value() const;
    // Store a deep copy; the flags stay.
    void set_read_value(const Value& value);
    void set_write_value(const Value& value);

    // Whether the member is present and holds something (Value::empty is false); false for a
    // miss.
    bool has_paging() const;
    bool has_symbol_options() const;
    // The member, made present (as a Null) by the first access even through the const forms,
    // so concurrent first reads race. The shared empty value for a miss. Paging has no setter:
    // it is filled through this reference.
    Value& paging();
    const Value& paging() const;
    Value& symbol_options();
    const Value& symbol_options() const;

    // Copies; 0 ns for a miss.
    Timestamp processed_start() const;
    Timestamp processed_end() const;
    void set_processed_start(const Timestamp& time);
    void set_processed_end(const Timestamp& time);
    // Store the monotonic clock (Timestamp::steady_now), for measuring the processing time: the
    // difference of the two marks, never a wall time.
    void set_processed_start();
    void set_processed_end();

private:
    // True when this handle holds the implementation of the shared empty command.
    QUORVANE_HIDDEN bool guarded() const;

    CommandImpl* impl_;
};

// The host's face of a CommandGroup, reached through CommandGroup::mapper(). Plain accesses
// without the shared-empty check, so writes through it land even in the shared empty group.
// The host calls these by position; the order is fixed.
class QUORVANE_API ICommandGroupMapper {
public:
    virtual MapperChangeState change_state() const = 0;
    virtual void set_change_state(MapperChangeState change_state) = 0;
    virtual void set_flags(CommandGroupFlags flags) = 0;
    virtual CommandGroupFlags flags() = 0;
    // Makes isset() false for good; the library does it only to its shared empty group.
    virtual void unset() = 0;
    virtual ~ICommandGroupMapper();
};

// A request: commands in order (names need not be unique), addressed to one domain, with one
// overall result. Positions, not keys, find a command.
//
// The shared empty group (isset() false) stands in for a missing group: its setters, reserve,
// clear and insert do nothing, while its getters, iterators, remove and mapper() work on it
// without a check. Assignment has no such check either. Copies are deep, every command
// included. Iterators and command references are those of Vector<Command>: insert, remove,
// reserve and clear invalidate them. Nothing reports an error; only allocation failures pass
// through (reserve of more than can be allocated included).
class QUORVANE_API CommandGroup : public IObject {
public:
    // Empty domain, result 0, flags 0, change state 1, no commands, isset() true.
    CommandGroup();
    // As above, addressed to `domain` (not null).
    CommandGroup(const char* domain);
    CommandGroup(const CommandGroup& other);
    // Exchanges implementations with the argument, without the shared-empty check.
    CommandGroup& operator=(CommandGroup other);
    ~CommandGroup() override;

    // Exchanges implementations, without any check; always true.
    bool swap(CommandGroup& other);

    // False only for the shared empty group and copies made of it.
    bool isset() const;

    // Equal when both are the same object or they hold the same number of commands with equal
    // names (byte for byte) in the same order; nothing else takes part.
    bool operator==(const CommandGroup& other) const;
    bool operator!=(const CommandGroup& other) const;

    // The host's face: the implementation itself, without protection. Valid until the group is
    // assigned to, swapped or destroyed.
    ICommandGroupMapper* mapper();

    // Valid until the group is changed or destroyed.
    const char* domain() const;
    // `domain` must not be null.
    void set_domain(const char* domain);
    unsigned int result() const;
    void set_result(unsigned int result);

    // Constant time.
    unsigned long size() const;
    bool empty() const;
    void reserve(unsigned long count);
    // Removes every command; domain and result stay.
    void clear();

    // The command at `index`, writable although the group is const, valid until the next
    // insert, remove, reserve or clear; the shared empty command (isset() false, writes dropped)
    // when `index` is not below the size.
    Command& operator[](unsigned long index) const;
    // An iterator on the command at `index`, or end_vector() when `index` is not below the size.
    // Allocates one iterator.
    VectorIterator<Command> find(unsigned long index) const;
    VectorIterator<Command> begin_vector();
    VectorIterator<Command> end_vector();
    ConstVectorIterator<Command> begin_vector() const;
    ConstVectorIterator<Command> end_vector() const;

    // Inserts a copy of `command` before `position` (which must belong to this group; the end
    // appends) and returns an iterator on it. The shared empty group answers its end instead.
    VectorIterator<Command> insert(const VectorIterator<Command>& position, const Command& command);
    // Erases the command under `position` (which must belong to this group) and returns an
    // iterator on the one that followed; the end position erases nothing and answers the end.
    VectorIterator<Command> remove(const VectorIterator<Command>& position);

private:
    // True when this handle holds the implementation of the shared empty group.
    QUORVANE_HIDDEN bool guarded() const;

    CommandGroupImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Listener interfaces
// ---------------------------------------------------------------------------------------------

class Alarm;
class Event;
class Message;

// The root of the interfaces through which the host calls an extension. An extension implements
// one interface per family it serves (a class may implement several); the host learns the family
// from type() and calls the operations by their position, so the number and order of the
// operations of every interface are fixed. The library neither keeps nor calls listeners.
//
// Unless an operation says otherwise, the references it gets are valid only during the call, and
// the host owns every object passed in.
class QUORVANE_API IQuorvaneListener {
public:
    // The family of this listener; each interface below answers its own constant.
    virtual ListenerType type() const = 0;
    virtual ~IQuorvaneListener();
};

// Configuration of the extension's domain.
class QUORVANE_API IQuorvaneConfigListener : public IQuorvaneListener {
public:
    // Always ListenerType::Config.
    ListenerType type() const final;
    // At start-up: the host hands over the stored configuration of the context's domain.
    // A failure keeps the domain from starting.
    virtual ResultPair on_config_1(const Context& context, const Value& configuration) = 0;
    // Reads configuration entries: each command names one by its path. Answer with each
    // command's read value and result.
    virtual ResultPair on_config_2(const Context& context, CommandGroup& commands) = 0;
    // Writes configuration entries from each command's write value; a refused entry gets its
    // own result, the others are applied.
    virtual ResultPair on_config_3(const Context& context, CommandGroup& commands) = 0;
    // Checks a proposed configuration without applying it; the answer says why it would be
    // refused, success if it would not.
    virtual ResultPair on_config_4(const Context& context, const Value& configuration) = 0;
    // Fills `schema` with the description of the domain's configuration, for the host's
    // editors.
    virtual ResultPair on_config_5(const Context& context, Value& schema) = 0;
    // The host has committed a configuration change of the context's domain; the extension may
    // reload it now.
    virtual void on_config_6(const Context& context) = 0;
};

// Translation of events into a client's language.
class QUORVANE_API IQuorvaneEventLocalizationListener : public IQuorvaneListener {
public:
    // Always ListenerType::EventLocalization.
    ListenerType type() const final;
    // Translates the texts of `event` in place into session.locale(), before the host passes
    // it to that client. A failure leaves the event as it was.
    virtual ResultPair on_event_localization(const Session& session, Event& event) = 0;
};

// An extension that holds alarms of its own.
class QUORVANE_API IQuorvaneAlarmProviderListener : public IQuorvaneListener {
public:
    // Always ListenerType::Alarm.
    ListenerType type() const final;
    // Fills `alarms`, a Vector value, with one Alarm value per alarm the extension holds, for a
    // client that opens its alarm list.
    virtual ResultPair on_alarm_1(const Context& context, Value& alarms) = 0;
    // A client acts on one alarm (acknowledges, comments on it); update `alarm` to the state it
    // reaches, or answer why the action is refused.
    virtual ResultPair on_alarm_2(const Context& context, Alarm& alarm) = 0;
};

// Requests on the extension's symbols, answered before the call returns.
class QUORVANE_API IQuorvaneRequestListener : public IQuorvaneListener {
public:
    // Always ListenerType::Request.
    ListenerType type() const final;
    // Answers each command of `commands` (read value, results, processing times); what fails
    // for one command goes into that command, the answer is the outcome of the request as a whole.
    virtual ResultPair on_request(const Context& context, CommandGroup& commands) = 0;
};

// Subscriptions of clients to changes of the extension's symbols.
class QUORVANE_API IQuorvaneSubscriptionListener : public IQuorvaneListener {
public:
    // Always ListenerType::Subscription.
    ListenerType type() const final;
    // Starts reporting changes of the commands' symbols under context.subscription_id(); answer
    // each command with its current value.
    virtual ResultPair on_subscription_1(const Context& context, CommandGroup& commands) = 0;
    // Ends the subscription context.subscription_id() for the commands' symbols; the commands'
    // results tell which were not subscribed.
    virtual ResultPair on_subscription_2(const Context& context, CommandGroup& commands) = 0;
};

// The life of client sessions.
class QUORVANE_API IQuorvaneSessionListener : public IQuorvaneListener {
public:
    // Always ListenerType::Session.
    ListenerType type() const final;
    // A client opened `session`. Called before any request of that session reaches the
    // extension.
    virtual void on_session_1(const Session& session) = 0;
    // `session` is closed; release what the extension holds for it. No request of that session
    // follows.
    virtual void on_session_2(const Session& session) = 0;
    // A user logged in on `session`; session.user() names the user. The session was opened
    // before.
    virtual void on_session_3(const Session& session) = 0;
    // The user of `session` logged out; the session itself stays open. session.user() still
    // names the user who left.
    virtual void on_session_4(const Session& session) = 0;
    // The client of `session` chose another language; session.locale() gives the new one.
    // Texts the extension keeps for this session may need translating again.
    virtual void on_session_5(const Session& session) = 0;
    // Fills `data` with what the extension keeps for `session`, for the host's diagnostics.
    // Nothing to report is an empty value and success.
    virtual ResultPair on_session_6(const Session& session, Value& data) = 0;
};

// The host's shutdown.
class QUORVANE_API IQuorvaneShutdownListener : public IQuorvaneListener {
public:
    // Always ListenerType::Shutdown.
    ListenerType type() const final;
    // The host is stopping for `reason` (HMI_E_SHUTDOWN, HMI_E_RESTART, ...): stop all work and
    // release the host's resources before returning. No other call follows.
    virtual void on_shutdown(ErrorValue reason) = 0;
};

// Authentication of the users of sessions.
class QUORVANE_API IQuorvaneAuthListener : public IQuorvaneListener {
public:
    // Always ListenerType::Auth.
    ListenerType type() const final;
    // Checks `credentials` (a Struct laid out by the host, such as user and password) and, on
    // success, sets the user of `session`. A refusal leaves the session as it was.
    virtual ResultPair on_auth_1(Session& session, const Value& credentials) = 0;
    // Whether the user of `session` holds the right named `right` (not null); any answer other
    // than success denies it, and its text may say why.
    virtual ResultPair on_auth_2(const Session& session, const char* right) = 0;
};

// Export and import of a domain's configuration.
class QUORVANE_API IQuorvaneExportListener : public IQuorvaneListener {
public:
    // Always ListenerType::ExportConfig.
    ListenerType type() const final;
    // Writes the configuration of the context's domain into `configuration`, in a form that
    // on_export_2 takes back.
    virtual ResultPair on_export_1(const Context& context, Value& configuration) = 0;
    // Replaces the configuration of the context's domain by `configuration`, as on_export_1
    // wrote it. A failure leaves the configuration as it was.
    virtual ResultPair on_export_2(const Context& context, const Value& configuration) = 0;
};

// Diagnostics raised anywhere in the server.
class QUORVANE_API IQuorvaneEventListener : public IQuorvaneListener {
public:
    // Always ListenerType::Event.
    ListenerType type() const final;
    // An event was raised. Keep a copy to hold on to it beyond the call.
    virtual void on_event_1(const Event& event) = 0;
    // A diagnostic message was issued. Keep a copy to hold on to it beyond the call.
    virtual void on_event_2(const Message& message) = 0;
    // An alarm changed its state; `alarm` shows the new one. Keep a copy to hold on to it
    // beyond the call.
    virtual void on_event_3(const Alarm& alarm) = 0;
    // A client published `payload` as an event of its own in the context's domain. Keep a copy
    // to hold on to it beyond the call.
    virtual void on_event_4(const Context& context, const Value& payload) = 0;
};

// The asynchronous twin of IQuorvaneRequestListener.
class QUORVANE_API IQuorvaneAsyncRequestListener : public IQuorvaneListener {
public:
    // Always ListenerType::AsyncRequest.
    ListenerType type() const final;
    // Accepts a request to be answered later, as on_request does at once. `commands` stays valid
    // until completion is reported through the host's interface (see host()); a failure refuses.
    virtual ErrorValue on_async_request_1(const Context& context, CommandGroup& commands) = 0;
    // Withdraws an accepted request (its client left). After returning, the extension must not
    // touch `commands` again, nor report its completion.
    virtual void on_async_request_2(const Context& context, CommandGroup& commands) = 0;
};

// The asynchronous twin of IQuorvaneEventLocalizationListener.
class QUORVANE_API IQuorvaneAsyncEventLocalizationListener : public IQuorvaneListener {
public:
    // Always ListenerType::AsyncEventLocalization.
    ListenerType type() const final;
    // Accepts `event` for translation into session.locale(). Both stay valid until completion is
    // reported through the host's interface (see host()); a failure refuses.
    virtual ErrorValue on_async_event_localization(const Session& session, Event& event) = 0;
};

// HTTP requests addressed to the extension's domain.
class QUORVANE_API IQuorvaneHttpListener : public IQuorvaneListener {
public:
    // Always ListenerType::Http.
    ListenerType type() const final;
    // Serves `request` by filling `response`, both Structs laid out by the host (method, URL,
    // headers, body; status, headers, body). A failure becomes an error response.
    virtual ResultPair on_http(const Context& context, const Value& request, Value& response) = 0;
};

// The asynchronous twin of IQuorvaneHttpListener.
class QUORVANE_API IQuorvaneAsyncHttpListener : public IQuorvaneListener {
public:
    // Always ListenerType::AsyncHttp.
    ListenerType type() const final;
    // Accepts `request` to fill `response` later. Both stay valid until completion is reported
    // through the host's interface (see host()); a failure refuses.
    virtual ErrorValue on_async_http(const Context& context, const Value& request,
                                     Value& response) = 0;
};

}  // namespace Quorvane

// The error catalogue and the result-stream builders belong to the same frame as ResultPair.
// They are declared with the algorithm library and reachable from here as well.
#include "helper/api_helper.h"
