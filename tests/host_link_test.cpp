#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <string>
#include <type_traits>

using Quorvane::IDataProvider;
using Quorvane::IQuorvaneExtHost;
using Quorvane::Value;

namespace {

// A host as a real one is built: both interfaces on one object. It counts the calls that reach
// its data provider face: linking alone never makes one.
class CountingHost : public IQuorvaneExtHost, public IDataProvider {
public:
    Value get_value(const char*, const char*, bool) override {
        ++calls;
        return Value("de");
    }
    int calls = 0;
};

// A host that offers no data provider at all.
class BareHost : public IQuorvaneExtHost {};

// A host built the other way round: its own service interface on top of IQuorvaneExtHost, and
// the data provider as its first base, so that the cast across has to move the pointer.
class HostServices : public IQuorvaneExtHost {
public:
    virtual int version() const = 0;
};

class ProviderFirstHost : public IDataProvider, public HostServices {
public:
    Value get_value(const char*, const char*, bool) override {
        ++calls;
        return Value("sv");
    }
    int version() const override { return 3; }
    int calls = 0;
};

// The language a fresh session reads, which is where the host's data provider is consulted.
std::string session_language() {
    return Quorvane::Session().locale();
}

using request_test::check;

// Facts about the process-wide host pointers need a process that has never seen a host.
class HostLinkDeathTest : public request_test::ScenarioDeathTest {};

}  // namespace

TEST_F(HostLinkDeathTest, HostIsNullBeforeInitialization) {
    run([] { return Quorvane::host() == nullptr; });
}

TEST_F(HostLinkDeathTest, NullHostOnFreshProcessKeepsHostNullAndTheDefaultLanguage) {
    run([] {
        Quorvane::initialize_api(nullptr);
        return check(Quorvane::host() == nullptr, "no host") &&
               check(session_language() == "en", "default language");
    });
}

TEST_F(HostLinkDeathTest, SecondHostReplacesTheFirstWithoutCallingIt) {
    run([] {
        CountingHost first;
        CountingHost second;
        Quorvane::initialize_api(&first);
        Quorvane::initialize_api(&second);
        bool ok = check(Quorvane::host() == &second, "second host");
        ok = check(first.calls == 0 && second.calls == 0, "no call while linking") && ok;
        ok = check(session_language() == "de", "language of the second host") && ok;
        return check(first.calls == 0 && second.calls == 1, "only the second asked") && ok;
    });
}

TEST_F(HostLinkDeathTest, NullAfterHostKeepsTheHostAndItsDataProvider) {
    run([] {
        CountingHost first;
        Quorvane::initialize_api(&first);
        Quorvane::initialize_api(nullptr);
        bool ok = check(Quorvane::host() == &first && first.calls == 0, "host kept");
        ok = check(session_language() == "de", "language of the host") && ok;
        return check(first.calls == 1, "data provider kept") && ok;
    });
}

TEST_F(HostLinkDeathTest, HostWithoutDataProviderIsKeptAndDropsTheEarlierProvider) {
    run([] {
        CountingHost first;
        BareHost bare;
        Quorvane::initialize_api(&first);
        Quorvane::initialize_api(&bare);
        bool ok = check(Quorvane::host() == &bare, "bare host");
        ok = check(session_language() == "en", "default language") && ok;
        return check(first.calls == 0, "earlier provider forgotten") && ok;
    });
}

TEST_F(HostLinkDeathTest, DataProviderIsFoundWhereverItSitsInTheHost) {
    run([] {
        ProviderFirstHost host;
        Quorvane::initialize_api(&host);
        bool ok = check(Quorvane::host() == static_cast<IQuorvaneExtHost*>(&host), "same host");
        ok = check(session_language() == "sv" && host.calls == 1, "provider asked") && ok;
        // The host handed back is usable as what the extension knows it to be.
        const auto* services = dynamic_cast<HostServices*>(Quorvane::host());
        return check(services != nullptr && services->version() == 3, "services") && ok;
    });
}

TEST_F(HostLinkDeathTest, ValuesWorkWithoutInitialization) {
    run([] {
        Value value(7);
        value = 8;
        return value.get_int32() == 8 && Quorvane::host() == nullptr;
    });
}

TEST(HostLink, GetValueIsTheFirstOperationOfTheDataProvider) {
    EXPECT_EQ(request_test::slot_of(&IDataProvider::get_value), 0);
}

TEST(HostLink, InterfacesAreUnrelatedPolymorphicClasses) {
    EXPECT_TRUE(std::is_polymorphic<IQuorvaneExtHost>::value);
    EXPECT_TRUE(std::is_polymorphic<IDataProvider>::value);
    EXPECT_FALSE((std::is_base_of<IQuorvaneExtHost, IDataProvider>::value));
    EXPECT_FALSE((std::is_base_of<IDataProvider, IQuorvaneExtHost>::value));
    EXPECT_TRUE(std::has_virtual_destructor<IDataProvider>::value);
}

TEST_F(HostLinkDeathTest, RepeatedInitializationOnlyReplacesThePointer) {
    // In a process of its own, so that no test is left with a pointer to a host that has gone.
    run([] {
        CountingHost host;
        Quorvane::initialize_api(&host);
        Quorvane::initialize_api(&host);
        return Quorvane::host() == &host && host.calls == 0;
    });
}

namespace {
struct Tracked : Quorvane::IObject {
    int payload = 41;
};
}  // namespace

TEST(ObjectAllocation, NewAndDeleteOfAnObjectClassWork) {
    Tracked* object = new Tracked;
    EXPECT_EQ(object->payload, 41);
    delete object;
    Quorvane::IObject* as_root = new Tracked;
    delete as_root;
}

TEST(ObjectAllocation, PlacementFormsUseTheGivenStorage) {
    alignas(Tracked) unsigned char storage[sizeof(Tracked)];
    Tracked* object = new (storage) Tracked;
    EXPECT_EQ(static_cast<void*>(object), static_cast<void*>(storage));
    object->~Tracked();
}

namespace {
struct ThrowingObject : Quorvane::IObject {
    ThrowingObject() { throw 7; }
};
}  // namespace

TEST(ObjectAllocation, FailedPlacementConstructionLeavesTheStorageAlone) {
    // A throwing constructor under placement new calls the placement release, which must not
    // release the caller's (here: automatic) storage; the sanitizer build would report it.
    alignas(ThrowingObject) unsigned char storage[sizeof(ThrowingObject)];
    EXPECT_THROW(new (storage) ThrowingObject, int);
}

TEST(ObjectAllocation, FailedHeapConstructionReleasesTheStorage) {
    // Leak checkers in the sanitizer build would report the storage if it were not released.
    EXPECT_THROW(new ThrowingObject, int);
}
