#pragma once
// Private to the library: not part of the API.
//
// The shared empty objects: one process-wide instance per class, created on first use (or by
// initialize_api) and destroyed at process exit. A miss hands one of them out instead of a null
// reference, and the setters of these classes refuse to write through them.

#include "QuorvaneExtApi.h"

namespace Quorvane {
namespace EmptyValues {

inline Command& empty_Command() {
    // A command whose isset() is false; the setters of Command recognise it by its
    // implementation and drop every write.
    struct EmptyCommandWrapper : Command {
        EmptyCommandWrapper() { mapper()->unset(); }
        ~EmptyCommandWrapper() override {}
    };
    static EmptyCommandWrapper wrapper;
    return wrapper;
}

inline CommandGroup& empty_CommandGroup() {
    struct EmptyCommandGroupWrapper : CommandGroup {
        EmptyCommandGroupWrapper() { mapper()->unset(); }
        ~EmptyCommandGroupWrapper() override {}
    };
    static EmptyCommandGroupWrapper wrapper;
    return wrapper;
}

inline Session& empty_Session() {
    static Session empty_session_;
    return empty_session_;
}

inline Timestamp& empty_Timestamp() {
    static Timestamp empty_timestammp_(0);
    return empty_timestammp_;
}

inline Value& empty_Value() {
    static Value empty_value_;
    return empty_value_;
}

}  // namespace EmptyValues
}  // namespace Quorvane

namespace Quorvane {
namespace EmptyIterators {

// Always-empty containers, not iterators: a Value of the wrong kind hands out their end
// position, so that a loop over it ends at once.
inline Map<Value>& empty_iterator() {
    static Map<Value> empty_iterator_;
    return empty_iterator_;
}

inline Vector<Value>& empty_vector_iterator() {
    static Vector<Value> empty_vector_iterator_;
    return empty_vector_iterator_;
}

}  // namespace EmptyIterators
}  // namespace Quorvane
