#pragma once
// The object model shared by host and extension, and the link through which the host hands the
// library its services.
//
// Every public object is a handle that owns one implementation object alone: copies are deep,
// assignment takes its argument by value and exchanges implementations, and nothing is shared or
// reference counted. No operation fails loudly: a miss answers a zero, an empty text or a shared
// empty object, and a write through a shared empty object is dropped.

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

    static void* operator new(unsigned long size);
    // Placement form: returns `place`.
    static void* operator new(unsigned long size, void* place);
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
// first use if this is never called.
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
// shared empty, so every setter writes.
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

// (containers and iterators)

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

    // Each set replaces kind and content; under the guard it does nothing.
    // A null text, and a Binary with bytes null but size not 0, change nothing.
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
    // Declares a new kind, keeping the content only where the storage already fits.
    Value& set_type(ValueType type);
    // Carries the content over to `type` where it can; otherwise leaves the value as it was.
    Value& convert(ValueType type);

    // Bool: the stored flag. Otherwise false.
    bool get_bool() const;
    // Int and Double: truncated toward zero; outside the 32-bit range and NaN give -2147483648.
    // Otherwise 0 (Bool and Int64 included).
    int get_int32() const;
    // Int64, DateTime, TimeSpan: the stored number. Otherwise 0 (Int included).
    long get_int64() const;
    // Bool, Int, Double (and an Int64 whose storage is still a double): the stored double.
    // Otherwise 0.0.
    double get_double() const;
    // Any kind whose storage is text or bytes: a pointer into this value (not NUL-terminated for
    // Binary). Otherwise a static empty text; never null. Valid until the value changes.
    const char* get_string() const;
    // Binary: size and first byte (null when empty). Otherwise {0, null}.
    Binary get_binary();
    Binary get_binary() const;
    // DateTime: its time. Otherwise Timestamp().
    Timestamp get_timestamp() const;
    // TimeSpan: its span. Otherwise Timespan().
    Timespan get_timespan() const;

    // Synonyms of the reads above.
    operator bool() const;
    operator int() const;
    operator long() const;
    operator double() const;
    operator const char*() const;
    operator Timestamp() const;
    operator Timespan() const;
    operator Binary() const;

private:
    // True when this handle is the shared empty value.
    QUORVANE_HIDDEN bool guarded() const;

    ValueImpl* impl_;
};

// ---------------------------------------------------------------------------------------------
// Session and Context
// ---------------------------------------------------------------------------------------------

// (session and context)

// ---------------------------------------------------------------------------------------------
// Command and CommandGroup
// ---------------------------------------------------------------------------------------------

// (command and command group)

// ---------------------------------------------------------------------------------------------
// Listener interfaces
// ---------------------------------------------------------------------------------------------

// (listener interfaces)

}  // namespace Quorvane
