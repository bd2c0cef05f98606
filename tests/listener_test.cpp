#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <type_traits>

using namespace Quorvane;

namespace {

// One extension object serving every family, as an extension that implements several listener
// interfaces does. It must be concrete: an interface with more pure operations than those
// overridden here would not compile.
class EveryFamily : public IQuorvaneConfigListener,
                    public IQuorvaneEventLocalizationListener,
                    public IQuorvaneAlarmProviderListener,
                    public IQuorvaneRequestListener,
                    public IQuorvaneSubscriptionListener,
                    public IQuorvaneSessionListener,
                    public IQuorvaneShutdownListener,
                    public IQuorvaneAuthListener,
                    public IQuorvaneExportListener,
                    public IQuorvaneEventListener,
                    public IQuorvaneAsyncRequestListener,
                    public IQuorvaneAsyncEventLocalizationListener,
                    public IQuorvaneHttpListener,
                    public IQuorvaneAsyncHttpListener {
public:
    ResultPair on_config_1(const Context&, const Value&) override { return ResultPair(); }
    ResultPair on_config_2(const Context&, CommandGroup&) override { return ResultPair(); }
    ResultPair on_config_3(const Context&, CommandGroup&) override { return ResultPair(); }
    ResultPair on_config_4(const Context&, const Value&) override { return ResultPair(); }
    ResultPair on_config_5(const Context&, Value&) override { return ResultPair(); }
    void on_config_6(const Context&) override {}
    ResultPair on_event_localization(const Session&, Event&) override { return ResultPair(); }
    ResultPair on_alarm_1(const Context&, Value&) override { return ResultPair(); }
    ResultPair on_alarm_2(const Context&, Alarm&) override { return ResultPair(); }
    ResultPair on_request(const Context&, CommandGroup& commands) override {
        commands[0].set_read_value(Value(7));
        return ResultPair();
    }
    ResultPair on_subscription_1(const Context&, CommandGroup&) override { return ResultPair(); }
    ResultPair on_subscription_2(const Context&, CommandGroup&) override { return ResultPair(); }
    void on_session_1(const Session&) override {}
    void on_session_2(const Session&) override {}
    void on_session_3(const Session&) override {}
    void on_session_4(const Session&) override {}
    void on_session_5(const Session&) override {}
    ResultPair on_session_6(const Session&, Value&) override { return ResultPair(); }
    void on_shutdown(ErrorValue reason) override { shutdown_reason = reason; }
    ResultPair on_auth_1(Session&, const Value&) override { return ResultPair(); }
    ResultPair on_auth_2(const Session&, const char*) override { return ResultPair(); }
    ResultPair on_export_1(const Context&, Value&) override { return ResultPair(); }
    ResultPair on_export_2(const Context&, const Value&) override { return ResultPair(); }
    void on_event_1(const Event&) override {}
    void on_event_2(const Message&) override {}
    void on_event_3(const Alarm&) override {}
    void on_event_4(const Context&, const Value&) override {}
    ErrorValue on_async_request_1(const Context&, CommandGroup&) override { return HMI_E_SUCCESS; }
    void on_async_request_2(const Context&, CommandGroup&) override {}
    ErrorValue on_async_event_localization(const Session&, Event&) override {
        return HMI_E_SUCCESS;
    }
    ResultPair on_http(const Context& context, const Value& request, Value& response) override {
        response = request;
        return ResultPair(HMI_E_FAIL, context.domain());
    }
    ErrorValue on_async_http(const Context&, const Value&, Value&) override {
        return HMI_E_SUCCESS;
    }

    ErrorValue shutdown_reason = HMI_E_SUCCESS;
};

template <typename Interface>
int type_through(const EveryFamily& object) {
    const IQuorvaneListener& root = static_cast<const Interface&>(object);
    return static_cast<int>(root.type());
}

using request_test::slot_of;

// Slot 0 is type(), slots 1 and 2 are the two forms of the destructor; an interface's own
// operations follow from slot 3 on.
constexpr long kFirstOperation = 3;

}  // namespace

// ---- ListenerType -------------------------------------------------------------------------

TEST(ListenerType, IsAFixed32BitEnumeration) {
    EXPECT_TRUE((std::is_same<std::underlying_type<ListenerType>::type, std::int32_t>::value));
}

TEST(ListenerType, NumbersAndTexts) {
    const struct {
        ListenerType type;
        int number;
        const char* text;
    } rows[] = {
        {ListenerType::Config, 0, "Config"},
        {ListenerType::EventLocalization, 1, "EventLocalization"},
        {ListenerType::Alarm, 2, "Alarm"},
        {ListenerType::Request, 3, "Request"},
        {ListenerType::Subscription, 4, "Subscription"},
        {ListenerType::Session, 5, "Session"},
        {ListenerType::Shutdown, 6, "Shutdown"},
        {ListenerType::Historize, 7, "Historize"},
        {ListenerType::Auth, 8, "Auth"},
        {ListenerType::File, 9, "File"},
        {ListenerType::Command, 10, "Command"},
        {ListenerType::Script, 11, "Script"},
        {ListenerType::CommitConfig, 12, "CommitConfig"},
        {ListenerType::ExportConfig, 13, "ExportConfig"},
        {ListenerType::Event, 14, "Event"},
        {ListenerType::AsyncRequest, 15, "AsyncRequest"},
        {ListenerType::AsyncEventLocalization, 16, "AsyncEventLocalization"},
        {ListenerType::Http, 17, "Http"},
        {ListenerType::AsyncHttp, 18, "AsyncHttp"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(static_cast<int>(row.type), row.number) << row.text;
        EXPECT_EQ(listener_type_to_string(row.type), row.text) << row.number;
        EXPECT_EQ(listener_type_to_string(static_cast<ListenerType>(row.number)), row.text);
    }
}

TEST(ListenerType, NumbersOutsideTheTableGiveEmptyText) {
    for (int number : {19, 20, 64, -1, -19, INT_MIN, INT_MAX}) {
        EXPECT_EQ(listener_type_to_string(static_cast<ListenerType>(number)), "") << number;
    }
}

// ---- the interfaces -----------------------------------------------------------------------

TEST(ListenerInterfaces, DeriveDirectlyFromTheAbstractRoot) {
    EXPECT_TRUE(std::is_abstract<IQuorvaneListener>::value);
    EXPECT_TRUE(std::has_virtual_destructor<IQuorvaneListener>::value);
    EXPECT_TRUE((std::is_base_of<IQuorvaneListener, IQuorvaneRequestListener>::value));
    EXPECT_FALSE((std::is_base_of<IQuorvaneRequestListener, IQuorvaneAsyncRequestListener>::value));
    EXPECT_FALSE((std::is_base_of<IQuorvaneHttpListener, IQuorvaneAsyncHttpListener>::value));
    EXPECT_TRUE(std::is_abstract<IQuorvaneRequestListener>::value);
}

TEST(ListenerInterfaces, EachBaseReportsItsOwnFamily) {
    const EveryFamily object;
    EXPECT_EQ(type_through<IQuorvaneConfigListener>(object), 0);
    EXPECT_EQ(type_through<IQuorvaneEventLocalizationListener>(object), 1);
    EXPECT_EQ(type_through<IQuorvaneAlarmProviderListener>(object), 2);
    EXPECT_EQ(type_through<IQuorvaneRequestListener>(object), 3);
    EXPECT_EQ(type_through<IQuorvaneSubscriptionListener>(object), 4);
    EXPECT_EQ(type_through<IQuorvaneSessionListener>(object), 5);
    EXPECT_EQ(type_through<IQuorvaneShutdownListener>(object), 6);
    EXPECT_EQ(type_through<IQuorvaneAuthListener>(object), 8);
    EXPECT_EQ(type_through<IQuorvaneExportListener>(object), 13);
    EXPECT_EQ(type_through<IQuorvaneEventListener>(object), 14);
    EXPECT_EQ(type_through<IQuorvaneAsyncRequestListener>(object), 15);
    EXPECT_EQ(type_through<IQuorvaneAsyncEventLocalizationListener>(object), 16);
    EXPECT_EQ(type_through<IQuorvaneHttpListener>(object), 17);
    EXPECT_EQ(type_through<IQuorvaneAsyncHttpListener>(object), 18);
}

TEST(ListenerInterfaces, FamiliesReadAsTheirNames) {
    const EveryFamily object;
    const IQuorvaneListener& alarm = static_cast<const IQuorvaneAlarmProviderListener&>(object);
    const IQuorvaneListener& exporter = static_cast<const IQuorvaneExportListener&>(object);
    EXPECT_EQ(listener_type_to_string(alarm.type()), "Alarm");
    EXPECT_EQ(listener_type_to_string(exporter.type()), "ExportConfig");
}

TEST(ListenerInterfaces, AHostCallsThroughTheInterface) {
    EveryFamily object;
    IQuorvaneHttpListener& listener = object;
    Value response;
    const ResultPair answer = listener.on_http(Context("Plant"), Value("GET /"), response);
    EXPECT_EQ(answer.result(), HMI_E_FAIL);
    EXPECT_STREQ(answer.text(), "Plant");
    EXPECT_STREQ(response.get_string(), "GET /");
    IQuorvaneRequestListener& requests = object;
    CommandGroup commands;
    commands.insert(commands.end_vector(), Command("a"));
    EXPECT_EQ(requests.on_request(Context(), commands), HMI_E_SUCCESS);
    EXPECT_EQ(commands[0].read_value().get_int32(), 7);
    IQuorvaneShutdownListener& shutdown = object;
    shutdown.on_shutdown(HMI_E_RESTART);
    EXPECT_EQ(object.shutdown_reason, HMI_E_RESTART);
}

namespace {

// A request listener that an extension derives further: the family stays the interface's.
class Requests : public IQuorvaneRequestListener {
public:
    ResultPair on_request(const Context&, CommandGroup&) override { return ResultPair(); }
};

class TracedRequests : public Requests {
public:
    ResultPair on_request(const Context&, CommandGroup&) override {
        return ResultPair(HMI_E_SKIP, "traced");
    }
};

}  // namespace

TEST(ListenerInterfaces, DerivedClassesKeepTheFamilyOfTheInterface) {
    const TracedRequests traced;
    const IQuorvaneListener& root = traced;
    EXPECT_EQ(root.type(), ListenerType::Request);
    EXPECT_EQ(traced.type(), ListenerType::Request);
    EXPECT_EQ(static_cast<const Requests&>(traced).type(), ListenerType::Request);
}

TEST(ListenerInterfaces, TheFamiliesAndTheirNamesAreFunctionsOfTheLibrary) {
    const std::map<std::string, std::uintptr_t> exported = request_test::library_symbols(true);
    if (exported.empty()) {
        GTEST_SKIP() << "the library's export table is not readable";
    }
    const char* const interfaces[] = {
        "IQuorvaneConfigListener",        "IQuorvaneEventLocalizationListener",
        "IQuorvaneAlarmProviderListener", "IQuorvaneRequestListener",
        "IQuorvaneSubscriptionListener",  "IQuorvaneSessionListener",
        "IQuorvaneShutdownListener",      "IQuorvaneAuthListener",
        "IQuorvaneExportListener",        "IQuorvaneEventListener",
        "IQuorvaneAsyncRequestListener",  "IQuorvaneAsyncEventLocalizationListener",
        "IQuorvaneHttpListener",          "IQuorvaneAsyncHttpListener",
    };
    for (const char* name : interfaces) {
        const std::string type =
            "_ZNK8Quorvane" + std::to_string(std::strlen(name)) + name + "4typeEv";
        EXPECT_EQ(exported.count(type), 1u) << type;
    }
    for (const char* destructor :
         {"_ZN8Quorvane17IQuorvaneListenerD0Ev", "_ZN8Quorvane17IQuorvaneListenerD1Ev",
          "_ZN8Quorvane17IQuorvaneListenerD2Ev"}) {
        EXPECT_EQ(exported.count(destructor), 1u) << destructor;
    }
    const auto names = exported.lower_bound("_ZN8Quorvane23listener_type_to_string");
    ASSERT_NE(names, exported.end());
    EXPECT_EQ(names->first.rfind("_ZN8Quorvane23listener_type_to_string", 0), 0u);
}

TEST(ListenerInterfaces, DestructionThroughTheRootRuns) {
    IQuorvaneListener* listener = static_cast<IQuorvaneRequestListener*>(new EveryFamily);
    EXPECT_EQ(listener->type(), ListenerType::Request);
    delete listener;
}

TEST(ListenerInterfaces, TypeComesFirstAndOperationsFollowTheDestructorInOrder) {
    EXPECT_EQ(slot_of(&IQuorvaneListener::type), 0);
    EXPECT_EQ(slot_of(&IQuorvaneRequestListener::type), 0);

    const long config[] = {slot_of(&IQuorvaneConfigListener::on_config_1),
                           slot_of(&IQuorvaneConfigListener::on_config_2),
                           slot_of(&IQuorvaneConfigListener::on_config_3),
                           slot_of(&IQuorvaneConfigListener::on_config_4),
                           slot_of(&IQuorvaneConfigListener::on_config_5),
                           slot_of(&IQuorvaneConfigListener::on_config_6)};
    const long session[] = {slot_of(&IQuorvaneSessionListener::on_session_1),
                            slot_of(&IQuorvaneSessionListener::on_session_2),
                            slot_of(&IQuorvaneSessionListener::on_session_3),
                            slot_of(&IQuorvaneSessionListener::on_session_4),
                            slot_of(&IQuorvaneSessionListener::on_session_5),
                            slot_of(&IQuorvaneSessionListener::on_session_6)};
    const long event[] = {
        slot_of(&IQuorvaneEventListener::on_event_1), slot_of(&IQuorvaneEventListener::on_event_2),
        slot_of(&IQuorvaneEventListener::on_event_3), slot_of(&IQuorvaneEventListener::on_event_4)};
    const long pairs[][2] = {
        {slot_of(&IQuorvaneAlarmProviderListener::on_alarm_1),
         slot_of(&IQuorvaneAlarmProviderListener::on_alarm_2)},
        {slot_of(&IQuorvaneSubscriptionListener::on_subscription_1),
         slot_of(&IQuorvaneSubscriptionListener::on_subscription_2)},
        {slot_of(&IQuorvaneAuthListener::on_auth_1), slot_of(&IQuorvaneAuthListener::on_auth_2)},
        {slot_of(&IQuorvaneExportListener::on_export_1),
         slot_of(&IQuorvaneExportListener::on_export_2)},
        {slot_of(&IQuorvaneAsyncRequestListener::on_async_request_1),
         slot_of(&IQuorvaneAsyncRequestListener::on_async_request_2)},
    };
    for (long i = 0; i < 6; ++i) {
        EXPECT_EQ(config[i], kFirstOperation + i);
        EXPECT_EQ(session[i], kFirstOperation + i);
    }
    for (long i = 0; i < 4; ++i) {
        EXPECT_EQ(event[i], kFirstOperation + i);
    }
    for (const auto& pair : pairs) {
        EXPECT_EQ(pair[0], kFirstOperation);
        EXPECT_EQ(pair[1], kFirstOperation + 1);
    }
    const long singles[] = {
        slot_of(&IQuorvaneEventLocalizationListener::on_event_localization),
        slot_of(&IQuorvaneRequestListener::on_request),
        slot_of(&IQuorvaneShutdownListener::on_shutdown),
        slot_of(&IQuorvaneAsyncEventLocalizationListener::on_async_event_localization),
        slot_of(&IQuorvaneHttpListener::on_http),
        slot_of(&IQuorvaneAsyncHttpListener::on_async_http),
    };
    for (long slot : singles) {
        EXPECT_EQ(slot, kFirstOperation);
    }
}
