#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <type_traits>

using Quorvane::Context;
using Quorvane::EndpointInfo;
using Quorvane::RequestType;
using Quorvane::Session;

TEST(Context, IsAHandleOutsideTheObjectFamily) {
    EXPECT_FALSE((std::is_base_of<Quorvane::IObject, Context>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Context>::value);
    EXPECT_TRUE((std::is_same<std::underlying_type<RequestType>::type, std::int32_t>::value));
}

TEST(Context, Defaults) {
    const Context context;
    EXPECT_EQ(context.request_type(), 1);
    EXPECT_EQ(context.request_type(), Quorvane::REQUEST_TYPE_DEFAULT);
    EXPECT_EQ(context.hash(), 0u);
    EXPECT_EQ(context.subscription_id(), 0u);
    EXPECT_STREQ(context.domain(), "");
    EXPECT_TRUE(context.session() == Session());
    EXPECT_STREQ(context.session().id(), "");
}

TEST(Context, DomainConstructorKeepsTheOtherDefaults) {
    const Context context("Plant");
    EXPECT_STREQ(context.domain(), "Plant");
    EXPECT_EQ(context.request_type(), 1);
    EXPECT_EQ(context.hash(), 0u);
    EXPECT_EQ(context.subscription_id(), 0u);
    EXPECT_TRUE(context == Context("Plant"));
}

TEST(Context, FieldsKeepWhatIsSet) {
    Context context;
    context.set_domain("Line2");
    context.set_request_type(static_cast<RequestType>(-3));
    context.set_hash(4294967295u);
    context.set_subscription_id(12);
    EXPECT_STREQ(context.domain(), "Line2");
    EXPECT_EQ(static_cast<int>(context.request_type()), -3);
    EXPECT_EQ(context.hash(), 4294967295u);
    EXPECT_EQ(context.subscription_id(), 12u);
}

TEST(Context, SessionIsAReferenceIntoTheContext) {
    Context context;
    context.session().set_user("operator");
    EXPECT_STREQ(context.session().user(), "operator");
    const Context& view = context;
    EXPECT_EQ(&view.session(), &context.session());
}

TEST(Context, SetSessionStoresACopy) {
    Session session;
    session.set_id("42");
    Context context;
    context.set_session(session);
    session.set_id("43");
    EXPECT_STREQ(context.session().id(), "42");
    EXPECT_NE(&context.session(), &session);
}

TEST(Context, CopyIsDeepSessionIncluded) {
    Context original("Plant");
    original.session().set_id("1");
    original.set_hash(5);
    Context copy(original);
    EXPECT_TRUE(copy == original);
    copy.session().set_id("2");
    copy.set_domain("Other");
    EXPECT_STREQ(original.session().id(), "1");
    EXPECT_STREQ(original.domain(), "Plant");
    EXPECT_EQ(copy.hash(), 5u);
}

TEST(Context, AssignmentTakesACopy) {
    Context source("Plant");
    source.set_subscription_id(9);
    Context target;
    target = source;
    EXPECT_STREQ(target.domain(), "Plant");
    EXPECT_EQ(target.subscription_id(), 9u);
    target.set_domain("Else");
    EXPECT_STREQ(source.domain(), "Plant");
}

TEST(ContextEquality, EachFieldCounts) {
    const std::function<void(Context&)> changes[] = {
        [](Context& c) { c.session().set_id("s2"); },
        [](Context& c) { c.session().set_user("someone"); },
        [](Context& c) { c.session().set_socket_id(1); },
        [](Context& c) { c.session().set_endpoint_info(static_cast<EndpointInfo>(1)); },
        [](Context& c) { c.set_hash(1); },
        [](Context& c) { c.set_subscription_id(1); },
        [](Context& c) { c.set_request_type(static_cast<RequestType>(2)); },
        [](Context& c) { c.set_domain("plant"); },
        [](Context& c) { c.set_domain("Plant "); },
    };
    int row = 0;
    for (const auto& change : changes) {
        Context base("Plant");
        base.session().set_id("s1");
        Context other(base);
        ASSERT_TRUE(base == other);
        change(other);
        EXPECT_FALSE(base == other) << row;
        EXPECT_TRUE(base != other) << row;
        ++row;
    }
}

TEST(ContextEquality, OnlySubscriptionDiffers) {
    Context a("Plant");
    Context b("Plant");
    b.set_subscription_id(1);
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
}

TEST(ContextEquality, SessionLanguageTakesNoPart) {
    Context a("Plant");
    Context b("Plant");
    a.session().set_locale("de-DE");
    b.session().set_locale("client");
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
}

TEST(ContextEquality, AContextEqualsItself) {
    Context context("Plant");
    context.session().set_user("operator");
    EXPECT_TRUE(context == context);
    EXPECT_FALSE(context != context);
}

TEST(ContextRobustness, SelfAssignmentKeepsTheContext) {
    Context context("Plant");
    context.session().set_id("s");
    Context& same = context;
    context = same;
    EXPECT_STREQ(context.domain(), "Plant");
    EXPECT_STREQ(context.session().id(), "s");
    context.set_session(context.session());
    EXPECT_STREQ(context.session().id(), "s");
}

TEST(ContextRobustness, ArbitraryDomainsAreStoredUpToTheTerminator) {
    for (const std::string& text : request_test::random_texts(1789u, 2000, 40)) {
        Context context(text.c_str());
        ASSERT_EQ(context.domain(), text);
        context.set_domain(text.c_str());
        ASSERT_EQ(context.domain(), text);
        ASSERT_TRUE(Context(context) == context);
    }
}
