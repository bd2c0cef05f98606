// The host link and the allocation root of the object model.

#include <new>

#include "QuorvaneExtApi.h"
#include "protocol/data_provider.h"
#include "protocol/empty_values.h"

namespace Quorvane {
namespace {

// The host exactly as it was passed; read only by host().
IQuorvaneExtHost* g_pExtHost = nullptr;

// Creates every shared empty object now rather than at its first use. The order is that in which
// the objects are asked for; an object whose construction needs another completes after it.
void create_shared_empties() {
    EmptyValues::empty_Command();
    EmptyValues::empty_CommandGroup();
    EmptyValues::empty_Session();
    EmptyValues::empty_Timestamp();
    EmptyValues::empty_Value();
    EmptyIterators::empty_iterator();
    EmptyIterators::empty_vector_iterator();
}

}  // namespace

void initialize_api(IQuorvaneExtHost* host) {
    if (host != nullptr) {
        g_pHost = dynamic_cast<IDataProvider*>(host);
        g_pExtHost = host;
    }
    create_shared_empties();
}

IQuorvaneExtHost* host() {
    return g_pExtHost;
}

IQuorvaneExtHost::~IQuorvaneExtHost() = default;

IObject::~IObject() = default;

void* IObject::operator new(unsigned long size) {
    return ::operator new(size);
}

void* IObject::operator new(unsigned long, void* place) {
    return place;
}

void IObject::operator delete(void* pointer) {
    ::operator delete(pointer);
}

void IObject::operator delete(void*, void*) {}

}  // namespace Quorvane
