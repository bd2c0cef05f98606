#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>

using Quorvane::EndpointInfo;
using Quorvane::IDataProvider;
using Quorvane::IQuorvaneExtHost;
using Quorvane::Session;
using Quorvane::Value;

namespace {

// A host whose data provider answers every read with a fixed value and counts the reads. It
// remembers the arguments of the last read.
class CountingHost : public IQuorvaneExtHost, public IDataProvider {
public:
    explicit CountingHost(Value answer) : answer_(answer) {}

    Value get_value(const char* name, const char* domain, bool flag) override {
        ++calls;
        last_name = name;
        last_domain = domain;
        last_flag = flag;
        if (throws) {
            throw std::runtime_error("configuration unavailable");
        }
        return answer_;
    }

    void answer(Value answer) { answer_ = answer; }

    int calls = 0;
    bool throws = false;
    std::string last_name;
    std::string last_domain;
    bool last_flag = false;

private:
    Value answer_;
};

// A host that offers no data provider.
class BareHost : public IQuorvaneExtHost {};

using request_test::check;
using request_test::same_text;

class SessionHostDeathTest : public request_test::ScenarioDeathTest {};

}  // namespace

// ---- the handle ---------------------------------------------------------------------------

TEST(Session, IsAHandleOutsideTheObjectFamily) {
    EXPECT_FALSE((std::is_base_of<Quorvane::IObject, Session>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Session>::value);
    EXPECT_TRUE((std::is_same<std::underlying_type<EndpointInfo>::type, std::uint8_t>::value));
}

TEST(Session, DefaultsAreEmpty) {
    const Session session;
    EXPECT_STREQ(session.id(), "");
    EXPECT_STREQ(session.user(), "");
    EXPECT_EQ(session.socket_id(), 0u);
    EXPECT_EQ(session.endpoint_info(), 0);
    EXPECT_EQ(session.endpoint_info(), Quorvane::ENDPOINT_INFO_DEFAULT);
}

TEST(Session, FieldsKeepWhatIsSet) {
    Session session;
    session.set_id("4711");
    session.set_user("operator");
    session.set_locale("de-DE");
    session.set_socket_id(4294967295u);
    session.set_endpoint_info(static_cast<EndpointInfo>(255));
    EXPECT_STREQ(session.id(), "4711");
    EXPECT_STREQ(session.user(), "operator");
    EXPECT_STREQ(session.locale(), "de-DE");
    EXPECT_EQ(session.socket_id(), 4294967295u);
    EXPECT_EQ(static_cast<int>(session.endpoint_info()), 255);
}

TEST(Session, TextsAreCopied) {
    char id[] = "first";
    Session session;
    session.set_id(id);
    id[0] = 'X';
    EXPECT_STREQ(session.id(), "first");
}

TEST(Session, CopyIsDeepAndIndependent) {
    Session original;
    original.set_id("a");
    original.set_user("u");
    original.set_locale("it");
    original.set_socket_id(3);
    Session copy(original);
    EXPECT_TRUE(copy == original);
    EXPECT_STREQ(copy.locale(), "it");
    copy.set_id("b");
    copy.set_locale("fr");
    EXPECT_STREQ(original.id(), "a");
    EXPECT_STREQ(original.locale(), "it");
}

TEST(Session, AssignmentTakesACopy) {
    Session source;
    source.set_user("alice");
    Session target;
    target = source;
    EXPECT_STREQ(target.user(), "alice");
    target.set_user("bob");
    EXPECT_STREQ(source.user(), "alice");
}

// ---- equality -----------------------------------------------------------------------------

TEST(SessionEquality, LanguageTakesNoPart) {
    Session a;
    Session b;
    for (Session* session : {&a, &b}) {
        session->set_id("17");
        session->set_user("operator");
        session->set_socket_id(9);
        session->set_endpoint_info(static_cast<EndpointInfo>(2));
    }
    a.set_locale("de-DE");
    b.set_locale("fr");
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
}

TEST(SessionEquality, EachIdentifyingFieldCounts) {
    const std::function<void(Session&)> changes[] = {
        [](Session& s) { s.set_id("other"); },
        [](Session& s) { s.set_id("1"); },  // same length, other byte
        [](Session& s) { s.set_id("10"); },
        [](Session& s) { s.set_user("Operator"); },
        [](Session& s) { s.set_user(""); },
        [](Session& s) { s.set_socket_id(8); },
        [](Session& s) { s.set_endpoint_info(static_cast<EndpointInfo>(1)); },
    };
    int row = 0;
    for (const auto& change : changes) {
        Session base;
        base.set_id("0");
        base.set_user("operator");
        base.set_socket_id(7);
        Session other(base);
        change(other);
        EXPECT_FALSE(base == other) << row;
        EXPECT_TRUE(base != other) << row;
        ++row;
    }
}

TEST(SessionEquality, ASessionEqualsItself) {
    Session session;
    session.set_id("x");
    EXPECT_TRUE(session == session);
    EXPECT_FALSE(session != session);
}

// ---- language without a host --------------------------------------------------------------

TEST(SessionLocale, StoredLanguageIsReturnedAsItIs) {
    Session session;
    session.set_locale("de-DE");
    EXPECT_STREQ(session.locale(), "de-DE");
}

TEST(SessionLocale, ClientMeansTheDefaultLanguage) {
    Session session;
    session.set_locale("client");
    EXPECT_STREQ(session.locale(), "en");
}

TEST(SessionLocale, OnlyTheExactWordClientFallsBack) {
    const char* kept[] = {"Client", "client ", "clien", "clients", " client"};
    for (const char* text : kept) {
        Session session;
        session.set_locale(text);
        EXPECT_STREQ(session.locale(), text);
    }
}

// ---- language with a host (each in a process of its own) ---------------------------------

TEST_F(SessionHostDeathTest, WithoutInitializationTheDefaultIsEnglishAndNothingIsStored) {
    run([] {
        Session session;
        bool ok = same_text(session.locale(), "en");
        // Linking a host afterwards shows that nothing was stored: the host is asked now.
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        ok = same_text(session.locale(), "fr") && ok;
        return check(host.calls == 1, "one call after the late link") && ok;
    });
}

TEST_F(SessionHostDeathTest, NullInitializationGivesEnglish) {
    run([] {
        Quorvane::initialize_api(nullptr);
        Session session;
        return same_text(session.locale(), "en");
    });
}

TEST_F(SessionHostDeathTest, TheHostIsAskedForTheDefaultLocaleOfQuorvane) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session session;
        const bool ok = same_text(session.locale(), "fr");
        return check(host.last_name == "DEFAULTLOCALE", "name") &&
               check(host.last_domain == "Quorvane", "domain") && check(host.last_flag, "flag") &&
               ok;
    });
}

TEST_F(SessionHostDeathTest, StoredLanguageDoesNotAskTheHost) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session session;
        session.set_locale("de-DE");
        const bool ok =
            same_text(session.locale(), "de-DE") && same_text(session.locale(), "de-DE");
        return check(host.calls == 0, "no call") && ok;
    });
}

TEST_F(SessionHostDeathTest, StoredClientDoesNotAskTheHost) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session session;
        session.set_locale("client");
        const bool ok = same_text(session.locale(), "en") && same_text(session.locale(), "en");
        return check(host.calls == 0, "no call") && ok;
    });
}

TEST_F(SessionHostDeathTest, AnswerClientIsCachedAndGivesEnglish) {
    run([] {
        CountingHost host(Value("client"));
        Quorvane::initialize_api(&host);
        Session session;
        bool ok = true;
        for (int i = 0; i < 3; ++i) {
            ok = same_text(session.locale(), "en") && ok;
        }
        return check(host.calls == 1, "exactly one call") && ok;
    });
}

TEST_F(SessionHostDeathTest, TextAnswerIsCachedAfterOneCall) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session session;
        bool ok = true;
        for (int i = 0; i < 3; ++i) {
            ok = same_text(session.locale(), "fr") && ok;
        }
        // The cache belongs to the session: a changed answer is not seen any more.
        host.answer(Value("it"));
        ok = same_text(session.locale(), "fr") && ok;
        return check(host.calls == 1, "exactly one call") && ok;
    });
}

TEST_F(SessionHostDeathTest, NullAnswerGivesEnglishAndIsAskedAgain) {
    run([] {
        CountingHost host{Value()};
        Quorvane::initialize_api(&host);
        Session session;
        bool ok = same_text(session.locale(), "en");
        ok = check(host.calls == 1, "first call") && ok;
        ok = same_text(session.locale(), "en") && ok;
        return check(host.calls == 2, "asked again") && ok;
    });
}

TEST_F(SessionHostDeathTest, AnswersOfOtherKindsAreNotCached) {
    run([] {
        const Value answers[] = {
            Value(5), Value(true), Value(2.5), Value(7L), Value(Quorvane::Timestamp(1)), Value("")};
        bool ok = true;
        for (const Value& answer : answers) {
            CountingHost host(answer);
            Quorvane::initialize_api(&host);
            Session session;
            ok = same_text(session.locale(), "en") && ok;
            ok = same_text(session.locale(), "en") && ok;
            ok = check(host.calls == 2, "asked at each call") && ok;
            // Once the host answers with text, that text is taken and kept.
            host.answer(Value("sv"));
            ok = same_text(session.locale(), "sv") && same_text(session.locale(), "sv") && ok;
            ok = check(host.calls == 3, "cached after the text answer") && ok;
        }
        return ok;
    });
}

TEST_F(SessionHostDeathTest, EmptyLanguageReopensTheFallback) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session session;
        bool ok = same_text(session.locale(), "fr");
        session.set_locale("");
        host.answer(Value("nl"));
        ok = same_text(session.locale(), "nl") && ok;
        return check(host.calls == 2, "asked again after the reset") && ok;
    });
}

TEST_F(SessionHostDeathTest, HostWithoutDataProviderGivesEnglish) {
    run([] {
        BareHost host;
        Quorvane::initialize_api(&host);
        Session session;
        return same_text(session.locale(), "en") && same_text(session.locale(), "en");
    });
}

TEST_F(SessionHostDeathTest, EachCopyCachesForItself) {
    run([] {
        CountingHost host(Value("fr"));
        Quorvane::initialize_api(&host);
        Session original;
        Session copy(original);
        Quorvane::Context context;
        context.set_session(original);
        bool ok = same_text(original.locale(), "fr");
        ok = same_text(copy.locale(), "fr") && ok;
        ok = same_text(context.session().locale(), "fr") && ok;
        ok = check(host.calls == 3, "one call per copy") && ok;
        // A copy made after the caching carries the cached text along.
        Session late(original);
        ok = same_text(late.locale(), "fr") && ok;
        return check(host.calls == 3, "the late copy asks nobody") && ok;
    });
}

TEST_F(SessionHostDeathTest, AnExceptionOfTheHostPassesThrough) {
    run([] {
        CountingHost host(Value("fr"));
        host.throws = true;
        Quorvane::initialize_api(&host);
        Session session;
        bool thrown = false;
        try {
            session.locale();
        } catch (const std::runtime_error& error) {
            thrown = std::strcmp(error.what(), "configuration unavailable") == 0;
        }
        bool ok = check(thrown, "the host's exception");
        host.throws = false;
        ok = same_text(session.locale(), "fr") && ok;
        return check(host.calls == 2, "asked again after the exception") && ok;
    });
}

TEST_F(SessionHostDeathTest, RawBytesInTheAnswerAreReadNoFurtherThanTheyGo) {
    run([] {
        // A Binary, or a value retagged from one, carries its bytes without a terminator.
        const auto binary = [](const char* bytes, std::uint64_t size) {
            unsigned char copy[8] = {};
            std::memcpy(copy, bytes, size);
            return Value(Quorvane::Binary{size, copy});
        };
        const auto retagged = [&binary](const char* bytes, std::uint64_t size,
                                        Quorvane::ValueType kind) {
            Value value = binary(bytes, size);
            value.set_type(kind);
            return value;
        };
        const struct {
            Value answer;
            const char* language;
            int calls_for_three_reads;
        } rows[] = {
            {binary("nl", 2), "nl", 1},
            {binary("nl\0x", 4), "nl", 1},
            {binary("\0nl", 3), "en", 3},
            {Value(Quorvane::Binary{}), "en", 3},
            {retagged("pt", 2, Quorvane::ValueType::Any), "pt", 1},
            {retagged("sv", 2, Quorvane::ValueType::Bool), "sv", 1},
            {retagged("da", 2, Quorvane::ValueType::Int64), "da", 1},
            // Retagging to Int or String drops the bytes.
            {retagged("fi", 2, Quorvane::ValueType::Int), "en", 3},
            {retagged("fi", 2, Quorvane::ValueType::String), "en", 3},
        };
        bool ok = true;
        int row = 0;
        for (const auto& r : rows) {
            CountingHost host(r.answer);
            Quorvane::initialize_api(&host);
            Session session;
            for (int i = 0; i < 3; ++i) {
                ok = same_text(session.locale(), r.language) && ok;
            }
            if (host.calls != r.calls_for_three_reads) {
                std::fprintf(stderr, "row %d: %d calls\n", row, host.calls);
                ok = false;
            }
            ++row;
        }
        return ok;
    });
}

TEST_F(SessionHostDeathTest, AnswersOfContainerKindsGiveEnglishAndAreAskedAgain) {
    run([] {
        Value map;
        map.insert("DEFAULTLOCALE", Value("fr"));
        Value vector;
        vector << Value("fr");
        bool ok = true;
        for (const Value& answer : {map, vector}) {
            CountingHost host(answer);
            Quorvane::initialize_api(&host);
            Session session;
            ok = same_text(session.locale(), "en") && same_text(session.locale(), "en") && ok;
            ok = check(host.calls == 2, "asked at each call") && ok;
        }
        return ok;
    });
}

TEST_F(SessionHostDeathTest, OnlyInitializationCreatesTheSharedEmptySession) {
    run([] {
        const auto* guard = static_cast<const unsigned char*>(request_test::library_address(
            "_ZGVZN8Quorvane11EmptyValues13empty_SessionEvE14empty_session_"));
        const auto* empty = static_cast<const Session*>(request_test::library_address(
            "_ZZN8Quorvane11EmptyValues13empty_SessionEvE14empty_session_"));
        if (guard == nullptr || empty == nullptr) {
            return true;  // no symbol table to look into
        }
        // Sessions, contexts and the language fallback do without it.
        Session session;
        Session copy(session);
        copy = session;
        Quorvane::Context context;
        context.set_session(session);
        bool ok = same_text(session.locale(), "en") && same_text(context.session().locale(), "en");
        ok = check(session == copy && context == Quorvane::Context(), "ordinary use") && ok;
        ok = check(*guard == 0, "not made by ordinary use") && ok;
        Quorvane::initialize_api(nullptr);
        ok = check(*guard != 0, "made by initialize_api") && ok;
        ok = check(*empty == Session() && std::strcmp(empty->id(), "") == 0 &&
                       std::strcmp(empty->user(), "") == 0 && empty->socket_id() == 0 &&
                       empty->endpoint_info() == 0,
                   "a default session") &&
             ok;
        return same_text(empty->locale(), "en") && ok;
    });
}

// ---- robustness ---------------------------------------------------------------------------

TEST(SessionRobustness, TheDefaultLanguageOutlivesTheSession) {
    const char* language = nullptr;
    {
        Session session;
        session.set_locale("client");
        language = session.locale();
    }
    EXPECT_STREQ(language, "en");
}

TEST(SessionRobustness, SelfAssignmentKeepsTheSession) {
    Session session;
    session.set_id("7");
    session.set_locale("de");
    Session& same = session;
    session = same;
    EXPECT_STREQ(session.id(), "7");
    EXPECT_STREQ(session.locale(), "de");
}

TEST(SessionRobustness, ArbitraryBytesAreStoredUpToTheTerminator) {
    for (const std::string& text : request_test::random_texts(20240611u, 2000, 40)) {
        Session session;
        session.set_id(text.c_str());
        session.set_user(text.c_str());
        session.set_locale(text.c_str());
        ASSERT_EQ(session.id(), text);
        ASSERT_EQ(session.user(), text);
        if (!text.empty() && text != "client") {
            ASSERT_EQ(session.locale(), text);
        }
        Session copy(session);
        ASSERT_TRUE(copy == session);
    }
}
