#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <type_traits>

using Quorvane::IDataProvider;
using Quorvane::IQuorvaneExtHost;
using Quorvane::Value;

namespace {

// A host as a real one is built: both interfaces on one object. It counts the calls that reach
// its data provider face, which must stay at zero through everything here.
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

// Facts about the process-wide host pointers need a process that has never seen a host.
class HostLinkDeathTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

}  // namespace

TEST_F(HostLinkDeathTest, HostIsNullBeforeInitialization) {
    EXPECT_EXIT(std::exit(Quorvane::host() == nullptr ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, NullHostOnFreshProcessKeepsHostNull) {
    EXPECT_EXIT(
        {
            Quorvane::initialize_api(nullptr);
            std::exit(Quorvane::host() == nullptr ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, SecondHostReplacesTheFirstWithoutCallingIt) {
    EXPECT_EXIT(
        {
            CountingHost first;
            CountingHost second;
            Quorvane::initialize_api(&first);
            Quorvane::initialize_api(&second);
            const bool ok = Quorvane::host() == &second && first.calls == 0 && second.calls == 0;
            std::exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, NullAfterHostKeepsTheHost) {
    EXPECT_EXIT(
        {
            CountingHost first;
            Quorvane::initialize_api(&first);
            Quorvane::initialize_api(nullptr);
            std::exit(Quorvane::host() == &first && first.calls == 0 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, HostWithoutDataProviderIsKept) {
    EXPECT_EXIT(
        {
            BareHost bare;
            Quorvane::initialize_api(&bare);
            std::exit(Quorvane::host() == &bare ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, NullHostOnFreshProcessLeavesTheDefaultLanguage) {
    EXPECT_EXIT(
        {
            Quorvane::initialize_api(nullptr);
            std::exit(session_language() == "en" ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, DataProviderIsFoundWhereverItSitsInTheHost) {
    EXPECT_EXIT(
        {
            ProviderFirstHost provider_first;
            Quorvane::initialize_api(&provider_first);
            const bool same = Quorvane::host() == static_cast<IQuorvaneExtHost*>(&provider_first);
            const bool asked = session_language() == "sv" && provider_first.calls == 1;
            // The host handed back is usable as what the extension knows it to be.
            const auto* services = dynamic_cast<HostServices*>(Quorvane::host());
            const bool usable = services != nullptr && services->version() == 3;
            std::exit(same && asked && usable ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, SecondHostAlsoReplacesTheDataProvider) {
    EXPECT_EXIT(
        {
            CountingHost first;
            CountingHost second;
            Quorvane::initialize_api(&first);
            Quorvane::initialize_api(&second);
            const bool ok = session_language() == "de" && first.calls == 0 && second.calls == 1;
            std::exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, NullAfterHostKeepsItsDataProvider) {
    EXPECT_EXIT(
        {
            CountingHost first;
            Quorvane::initialize_api(&first);
            Quorvane::initialize_api(nullptr);
            std::exit(session_language() == "de" && first.calls == 1 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, HostWithoutDataProviderDropsTheEarlierProvider) {
    EXPECT_EXIT(
        {
            CountingHost first;
            BareHost bare;
            Quorvane::initialize_api(&first);
            Quorvane::initialize_api(&bare);
            const bool ok =
                Quorvane::host() == &bare && session_language() == "en" && first.calls == 0;
            std::exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(HostLinkDeathTest, ValuesWorkWithoutInitialization) {
    EXPECT_EXIT(
        {
            Value value(7);
            value = 8;
            std::exit(value.get_int32() == 8 && Quorvane::host() == nullptr ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(HostLink, InterfacesAreUnrelatedPolymorphicClasses) {
    EXPECT_TRUE(std::is_polymorphic<IQuorvaneExtHost>::value);
    EXPECT_TRUE(std::is_polymorphic<IDataProvider>::value);
    EXPECT_FALSE((std::is_base_of<IQuorvaneExtHost, IDataProvider>::value));
    EXPECT_FALSE((std::is_base_of<IDataProvider, IQuorvaneExtHost>::value));
    EXPECT_TRUE(std::has_virtual_destructor<IDataProvider>::value);
}

TEST(HostLink, RepeatedInitializationOnlyReplacesThePointer) {
    CountingHost host;
    Quorvane::initialize_api(&host);
    Quorvane::initialize_api(&host);
    EXPECT_EQ(Quorvane::host(), &host);
    EXPECT_EQ(host.calls, 0);
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
