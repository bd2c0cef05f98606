#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <type_traits>

using namespace Quorvane;

namespace {

// The shared empty command, reached the way an extension meets it: a look-up past the end.
Command& miss() {
    static const CommandGroup nothing;
    return nothing[0];
}

// The shared empty value, reached through a look-up that misses.
const Value& shared_empty_value() {
    static const Value nothing;
    return nothing[0ul];
}

unsigned flags_of(const Command& command) {
    return static_cast<unsigned>(command.mapper()->flags());
}

using request_test::check;
using request_test::slot_of;

class SharedEmptyCommandDeathTest : public request_test::ScenarioDeathTest {};

}  // namespace

// ---- the two faces ------------------------------------------------------------------------

TEST(Command, IsAnObjectWithAMapperFace) {
    EXPECT_TRUE((std::is_base_of<IObject, Command>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Command>::value);
    EXPECT_TRUE(std::is_abstract<ICommandMapper>::value);
    EXPECT_TRUE(std::has_virtual_destructor<ICommandMapper>::value);
    for (auto type : {sizeof(InternalCommandOption), sizeof(CommandOption)}) {
        EXPECT_EQ(type, 4u);
    }
}

TEST(ICommandMapper, OperationsKeepTheirPositions) {
    EXPECT_EQ(slot_of(&ICommandMapper::set_flags), 0);
    EXPECT_EQ(slot_of(&ICommandMapper::flags), 1);
    EXPECT_EQ(slot_of(&ICommandMapper::set_last_sent), 2);
    EXPECT_EQ(slot_of(&ICommandMapper::last_sent), 3);
    EXPECT_EQ(slot_of(&ICommandMapper::set_path), 4);
    EXPECT_EQ(slot_of(&ICommandMapper::set_symbol_name), 5);
    EXPECT_EQ(slot_of(&ICommandMapper::symbol_name), 6);
    EXPECT_EQ(slot_of(&ICommandMapper::set_mapping), 7);
    EXPECT_EQ(slot_of(&ICommandMapper::set_domain), 8);
    EXPECT_EQ(slot_of(&ICommandMapper::set_result), 9);
    EXPECT_EQ(slot_of(&ICommandMapper::set_hash), 10);
    EXPECT_EQ(slot_of(&ICommandMapper::hash), 11);
    EXPECT_EQ(slot_of(&ICommandMapper::unset), 12);
    EXPECT_EQ(slot_of(&ICommandMapper::set_symbol_options), 13);
}

TEST(ICommandGroupMapper, OperationsKeepTheirPositions) {
    EXPECT_EQ(slot_of(&ICommandGroupMapper::change_state), 0);
    EXPECT_EQ(slot_of(&ICommandGroupMapper::set_change_state), 1);
    EXPECT_EQ(slot_of(&ICommandGroupMapper::set_flags), 2);
    EXPECT_EQ(slot_of(&ICommandGroupMapper::flags), 3);
    EXPECT_EQ(slot_of(&ICommandGroupMapper::unset), 4);
}

TEST(Command, MapperIsTheImplementationOfThisCommand) {
    Command command;
    const Command& view = command;
    EXPECT_EQ(command.mapper(), view.mapper());
    Command other;
    EXPECT_NE(command.mapper(), other.mapper());
}

// ---- a new command ------------------------------------------------------------------------

TEST(Command, NewCommandDefaults) {
    const Command command;
    EXPECT_TRUE(command.isset());
    EXPECT_TRUE(command.changed());
    EXPECT_FALSE(command.has_paging());
    EXPECT_FALSE(command.has_symbol_options());
    EXPECT_EQ(command.processed_start().nanoseconds(), 0);
    EXPECT_EQ(command.processed_end().nanoseconds(), 0);
    for (const char* text :
         {command.name(), command.domain(), command.mapping(), command.path(),
          command.customer_data(), command.result_string(), command.mapper()->symbol_name()}) {
        EXPECT_STREQ(text, "");
    }
    EXPECT_EQ(command.result(), HMI_E_SUCCESS);
    EXPECT_EQ(command.extension_result(), 0u);
    EXPECT_EQ(command.options(), 0u);
    EXPECT_EQ(flags_of(command), 0x40001u);
    EXPECT_EQ(command.mapper()->flags(), INTERNAL_COMMAND_DEFAULT);
    EXPECT_EQ(command.mapper()->hash(), 0u);
    EXPECT_EQ(command.mapper()->last_sent(), 0);
    EXPECT_EQ(command.read_value().type(), ValueType::Null);
    EXPECT_EQ(command.write_value().type(), ValueType::Null);
}

TEST(Command, NameConstructor) {
    const Command command("Pump7::Speed");
    EXPECT_STREQ(command.name(), "Pump7::Speed");
    EXPECT_TRUE(command.isset());
    EXPECT_EQ(flags_of(command), 0x40001u);
}

TEST(Command, ExtensionSettersStoreCopies) {
    char text[] = "abc";
    Command command;
    command.set_name(text);
    command.set_customer_data(text);
    command.set_result_string(text);
    text[0] = 'X';
    EXPECT_STREQ(command.name(), "abc");
    EXPECT_STREQ(command.customer_data(), "abc");
    EXPECT_STREQ(command.result_string(), "abc");
    command.set_extension_result(4000000000u);
    command.set_options(static_cast<CommandOption>(0x80000005u));
    EXPECT_EQ(command.extension_result(), 4000000000u);
    EXPECT_EQ(command.options(), 0x80000005u);
}

TEST(Command, MapperSettersStoreCopies) {
    char text[] = "abc";
    Command command;
    ICommandMapper* mapper = command.mapper();
    mapper->set_path(text);
    mapper->set_symbol_name(text);
    mapper->set_mapping(text);
    mapper->set_domain(text);
    text[0] = 'X';
    EXPECT_STREQ(command.path(), "abc");
    EXPECT_STREQ(mapper->symbol_name(), "abc");
    EXPECT_STREQ(command.mapping(), "abc");
    EXPECT_STREQ(command.domain(), "abc");
    mapper->set_hash(4294967295u);
    mapper->set_last_sent(-9223372036854775807L - 1);
    mapper->set_flags(static_cast<InternalCommandOption>(0xFFFFFFFFu));
    EXPECT_EQ(mapper->hash(), 4294967295u);
    EXPECT_EQ(mapper->last_sent(), -9223372036854775807L - 1);
    EXPECT_EQ(flags_of(command), 0xFFFFFFFFu);
}

TEST(Command, UnsetThroughTheMapperIsForGoodButSettersStillWork) {
    Command command("a");
    command.mapper()->unset();
    EXPECT_FALSE(command.isset());
    command.set_name("b");
    command.set_read_value(Value(1));
    EXPECT_STREQ(command.name(), "b");
    EXPECT_EQ(command.read_value().get_int32(), 1);
    EXPECT_FALSE(command.isset());
}

// ---- change tracking ----------------------------------------------------------------------

TEST(CommandFlags, SetChangedTogglesBitsZeroAndTwelve) {
    Command command;
    command.set_changed(false);
    EXPECT_FALSE(command.changed());
    EXPECT_EQ(flags_of(command), 0x41000u);
    command.set_changed(true);
    EXPECT_TRUE(command.changed());
    EXPECT_EQ(flags_of(command), 0x40001u);
}

TEST(CommandFlags, ChangesTouchBitsZeroAndTwelveOnly) {
    const std::function<void(Command&)> changed = [](Command& c) { c.set_changed(true); };
    const std::function<void(Command&)> unchanged = [](Command& c) { c.set_changed(false); };
    const std::function<void(Command&)> failed = [](Command& c) {
        c.mapper()->set_result(HMI_E_FAIL);
    };
    const std::function<void(Command&)> succeeded = [](Command& c) {
        c.mapper()->set_result(HMI_E_SUCCESS);
    };
    const struct {
        unsigned before;
        const std::function<void(Command&)>& step;
        unsigned after;
    } rows[] = {
        {0xFFFFFFFFu, unchanged, 0xFFFFFFFEu},
        {0xFFFFFFFFu, changed, 0xFFFFEFFFu},
        {0x0u, unchanged, 0x1000u},
        {0x0u, changed, 0x1u},
        {0x1001u, changed, 0x1u},
        {0x1001u, unchanged, 0x1000u},
        {0x80040000u, changed, 0x80040001u},
        {0x40001u, changed, 0x40001u},
        {0x41000u, unchanged, 0x41000u},
        {0x0u, failed, 0x1u},
        {0x0u, succeeded, 0x0u},
        {0x1000u, failed, 0x1u},
        {0xFFFFFFFFu, failed, 0xFFFFEFFFu},
        {0xFFFFFFFEu, failed, 0xFFFFEFFFu},
        {0xFFFFFFFEu, succeeded, 0xFFFFFFFEu},
    };
    int number = 0;
    for (const auto& row : rows) {
        Command command;
        command.mapper()->set_flags(static_cast<InternalCommandOption>(row.before));
        row.step(command);
        EXPECT_EQ(flags_of(command), row.after) << "row " << number++;
    }
}

TEST(CommandFlags, ChangedReadsBitZeroOnly) {
    const struct {
        unsigned flags;
        bool changed;
    } rows[] = {{0x0u, false},     {0x1u, true},         {0x1000u, false},   {0x1001u, true},
                {0x40000u, false}, {0xFFFFFFFEu, false}, {0xFFFFFFFFu, true}};
    for (const auto& row : rows) {
        Command command;
        command.mapper()->set_flags(static_cast<InternalCommandOption>(row.flags));
        EXPECT_EQ(command.changed(), row.changed) << std::hex << row.flags;
    }
}

TEST(CommandFlags, ANewResultMarksTheCommandChanged) {
    Command command;
    command.set_changed(false);
    command.mapper()->set_result(HMI_E_FAIL);
    EXPECT_TRUE(command.changed());
    EXPECT_EQ(flags_of(command), 0x40001u);
    EXPECT_EQ(command.result(), HMI_E_FAIL);
}

TEST(CommandFlags, TheSameResultTouchesNoFlag) {
    Command command;
    command.set_changed(false);
    command.mapper()->set_result(HMI_E_SUCCESS);
    EXPECT_FALSE(command.changed());
    EXPECT_EQ(flags_of(command), 0x41000u);

    command.set_changed(true);
    command.mapper()->set_result(HMI_E_INVALID_TYPE);
    command.set_changed(false);
    command.mapper()->set_result(HMI_E_INVALID_TYPE);
    EXPECT_FALSE(command.changed());
    EXPECT_EQ(command.result(), HMI_E_INVALID_TYPE);
}

TEST(CommandFlags, AnswersOtherThanTheResultTouchNoFlag) {
    Command command;
    command.set_changed(false);
    command.set_extension_result(7);
    command.set_result_string("done");
    command.set_read_value(Value(1));
    command.set_write_value(Value(2));
    command.read_value() = Value(3);
    command.set_customer_data("x");
    command.set_options(static_cast<CommandOption>(1));
    command.set_name("n");
    command.set_processed_start();
    command.set_processed_end();
    command.mapper()->set_symbol_options(Value(4));
    command.paging() = Value(5);
    EXPECT_EQ(flags_of(command), 0x41000u);
}

TEST(CommandFlags, RandomSequencesFollowTheChangeRules) {
    std::mt19937 random(5150u);
    std::uniform_int_distribution<int> step(0, 2);
    std::uniform_int_distribution<std::uint32_t> word;
    const ErrorValue results[] = {HMI_E_SUCCESS, HMI_E_FAIL, HMI_E_UNCHANGED};
    for (int sequence = 0; sequence < 200; ++sequence) {
        Command command;
        std::uint32_t flags = 0x40001u;
        ErrorValue result = HMI_E_SUCCESS;
        for (int i = 0; i < 20; ++i) {
            switch (step(random)) {
                case 0: {
                    const bool changed = (word(random) & 1u) != 0;
                    command.set_changed(changed);
                    flags = (flags & ~0x1001u) | (changed ? 0x1u : 0x1000u);
                    break;
                }
                case 1: {
                    const ErrorValue next = results[word(random) % 3];
                    command.mapper()->set_result(next);
                    if (next != result) {
                        flags = (flags & ~0x1001u) | 0x1u;
                    }
                    result = next;
                    break;
                }
                default:
                    flags = word(random);
                    command.mapper()->set_flags(static_cast<InternalCommandOption>(flags));
                    break;
            }
            ASSERT_EQ(flags_of(command), flags) << "sequence " << sequence << ", step " << i;
            ASSERT_EQ(command.changed(), (flags & 1u) != 0);
            ASSERT_EQ(command.result(), result);
        }
    }
}

// ---- values -------------------------------------------------------------------------------

TEST(CommandValues, SettersStoreDeepCopies) {
    Value value("first");
    Command command;
    command.set_read_value(value);
    command.set_write_value(value);
    value.set("second");
    EXPECT_STREQ(command.read_value().get_string(), "first");
    EXPECT_STREQ(command.write_value().get_string(), "first");
}

TEST(CommandValues, ReferencesWriteIntoTheCommand) {
    Command command;
    command.read_value() = Value(73.5);
    command.write_value().set(1450);
    const Command& view = command;
    EXPECT_EQ(view.read_value().get_double(), 73.5);
    EXPECT_EQ(view.write_value().get_int32(), 1450);
    EXPECT_EQ(&view.read_value(), &command.read_value());
}

// ---- the optional members -----------------------------------------------------------------

TEST(CommandPaging, AReadMakesItPresentButNotSet) {
    Command command;
    EXPECT_EQ(command.paging().type(), ValueType::Null);
    EXPECT_FALSE(command.has_paging());
    command.paging() = Value(25);
    EXPECT_TRUE(command.has_paging());
    EXPECT_EQ(command.paging().get_int32(), 25);
}

TEST(CommandPaging, TheConstReadEngagesTheSameMember) {
    Command command;
    const Command& view = command;
    const Value& first = view.paging();
    EXPECT_FALSE(view.has_paging());
    EXPECT_EQ(&first, &command.paging());
    command.paging().insert("offset", Value(100));
    EXPECT_TRUE(view.has_paging());
    EXPECT_EQ(view.paging()["offset"].get_int32(), 100);
}

TEST(CommandPaging, PresenceNeedsAValueThatIsNotEmpty) {
    const struct {
        Value value;
        bool has;
    } rows[] = {
        {Value(), false},   {Value(""), false}, {Value(0), true},        {Value(false), true},
        {Value("x"), true}, {Value(0.0), true}, {Value(Binary{}), true},
    };
    for (const auto& row : rows) {
        Command command;
        command.paging() = row.value;
        command.symbol_options() = row.value;
        EXPECT_EQ(command.has_paging(), row.has) << static_cast<int>(row.value.type());
        EXPECT_EQ(command.has_symbol_options(), row.has);
    }
    Command command;
    command.paging() << Value(1);
    EXPECT_TRUE(command.has_paging());
    command.paging().clear();
    EXPECT_FALSE(command.has_paging());
}

TEST(CommandSymbolOptions, MapperSetterMakesThemPresent) {
    Command command;
    EXPECT_FALSE(command.has_symbol_options());
    Value options;
    options.insert("unit", Value("rpm"));
    command.mapper()->set_symbol_options(options);
    options.insert("scale", Value(2));
    EXPECT_TRUE(command.has_symbol_options());
    EXPECT_EQ(command.symbol_options().size(), 1u);
    EXPECT_STREQ(command.symbol_options()["unit"].get_string(), "rpm");

    // Present already: replaced by a copy of the new value.
    const Value* before = &command.symbol_options();
    command.mapper()->set_symbol_options(Value(7));
    EXPECT_EQ(command.symbol_options().get_int32(), 7);
    EXPECT_EQ(before, &command.symbol_options());

    command.mapper()->set_symbol_options(Value());
    EXPECT_FALSE(command.has_symbol_options());
}

TEST(CommandSymbolOptions, ConstReadOfAbsentOptionsGivesNull) {
    const Command command;
    EXPECT_EQ(command.symbol_options().type(), ValueType::Null);
    EXPECT_FALSE(command.has_symbol_options());
}

// ---- processing times ---------------------------------------------------------------------

TEST(CommandTimes, MarksWithoutArgumentReadTheMonotonicClock) {
    Command command;
    const long before = Timestamp::steady_now().nanoseconds();
    command.set_processed_start();
    command.set_processed_end();
    const long after = Timestamp::steady_now().nanoseconds();
    EXPECT_GE(command.processed_start().nanoseconds(), before);
    EXPECT_LE(command.processed_start().nanoseconds(), command.processed_end().nanoseconds());
    EXPECT_LE(command.processed_end().nanoseconds(), after);
}

TEST(CommandTimes, MarksWithArgumentStoreCopies) {
    Command command;
    Timestamp start(-5);
    command.set_processed_start(start);
    command.set_processed_end(Timestamp(9223372036854775807L));
    start = Timestamp(1);
    EXPECT_EQ(command.processed_start().nanoseconds(), -5);
    EXPECT_EQ(command.processed_end().nanoseconds(), 9223372036854775807L);
}

// ---- equality -----------------------------------------------------------------------------

TEST(CommandEquality, NamesAloneDecide) {
    Command a("a");
    Command b("a");
    a.set_write_value(Value(1));
    b.set_write_value(Value(2));
    b.mapper()->set_path("elsewhere");
    b.mapper()->set_result(HMI_E_FAIL);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    const Command upper("A");
    EXPECT_FALSE(a == upper);
    EXPECT_TRUE(a != upper);
}

TEST(CommandEquality, SameHandleIsEqual) {
    const Command a("x");
    EXPECT_TRUE(a == a);
    EXPECT_FALSE(a != a);
    const Command unnamed;
    EXPECT_TRUE(unnamed == Command());
}

TEST(CommandEquality, TheSharedEmptyCommandComparesByNameLikeAnyOther) {
    EXPECT_TRUE(miss() == Command());
    EXPECT_TRUE(Command() == miss());
    EXPECT_FALSE(miss() != Command());
    EXPECT_FALSE(miss() == Command("a"));
    EXPECT_TRUE(miss() == miss());
}

// ---- copying and exchanging ---------------------------------------------------------------

TEST(CommandCopy, SelfAssignmentKeepsTheCommand) {
    Command command("self");
    command.set_read_value(Value(3));
    Command& same = command;
    command = same;
    EXPECT_STREQ(command.name(), "self");
    EXPECT_EQ(command.read_value().get_int32(), 3);
    command.set_read_value(command.read_value());
    command.set_write_value(command.read_value());
    EXPECT_EQ(command.write_value().get_int32(), 3);
}

TEST(CommandCopy, CopiesEveryFieldAndFlag) {
    Command original("c");
    ICommandMapper* mapper = original.mapper();
    mapper->set_path("P");
    mapper->set_symbol_name("S");
    mapper->set_mapping("M");
    mapper->set_domain("D");
    mapper->set_result(HMI_E_FAIL);
    mapper->set_hash(11);
    mapper->set_last_sent(12);
    mapper->set_flags(static_cast<InternalCommandOption>(0x1234u));
    mapper->set_symbol_options(Value("o"));
    original.set_extension_result(13);
    original.set_options(static_cast<CommandOption>(14));
    original.set_customer_data("C");
    original.set_result_string("R");
    original.set_read_value(Value(15));
    original.set_write_value(Value(16));
    original.set_processed_start(Timestamp(17));
    original.set_processed_end(Timestamp(18));
    original.paging() = Value(19);
    mapper->unset();

    const Command copy(original);
    EXPECT_FALSE(copy.isset());
    EXPECT_NE(copy.mapper(), original.mapper());
    EXPECT_STREQ(copy.name(), "c");
    EXPECT_STREQ(copy.path(), "P");
    EXPECT_STREQ(copy.mapper()->symbol_name(), "S");
    EXPECT_STREQ(copy.mapping(), "M");
    EXPECT_STREQ(copy.domain(), "D");
    EXPECT_EQ(copy.result(), HMI_E_FAIL);
    EXPECT_EQ(copy.mapper()->hash(), 11u);
    EXPECT_EQ(copy.mapper()->last_sent(), 12);
    EXPECT_EQ(flags_of(copy), 0x1234u);
    EXPECT_EQ(copy.extension_result(), 13u);
    EXPECT_EQ(copy.options(), 14u);
    EXPECT_STREQ(copy.customer_data(), "C");
    EXPECT_STREQ(copy.result_string(), "R");
    EXPECT_EQ(copy.read_value().get_int32(), 15);
    EXPECT_EQ(copy.write_value().get_int32(), 16);
    EXPECT_EQ(copy.processed_start().nanoseconds(), 17);
    EXPECT_EQ(copy.processed_end().nanoseconds(), 18);
    EXPECT_TRUE(copy.has_paging());
    EXPECT_EQ(copy.paging().get_int32(), 19);
    EXPECT_TRUE(copy.has_symbol_options());
    EXPECT_STREQ(copy.symbol_options().get_string(), "o");
}

TEST(CommandCopy, EngagedPagingIsCopiedDeeply) {
    Command original;
    original.paging().insert("limit", Value(10));
    Command copy(original);
    copy.paging()["limit"] = 20;
    EXPECT_EQ(original.paging()["limit"].get_int32(), 10);
    EXPECT_EQ(copy.paging()["limit"].get_int32(), 20);
    EXPECT_NE(&original.paging(), &copy.paging());
}

TEST(CommandCopy, AssignmentTakesACopy) {
    Command source("s");
    source.set_read_value(Value(1));
    Command target("t");
    target = source;
    EXPECT_STREQ(target.name(), "s");
    target.set_read_value(Value(2));
    EXPECT_EQ(source.read_value().get_int32(), 1);
}

TEST(CommandCopy, SwapExchangesImplementations) {
    Command a("a");
    Command b("b");
    ICommandMapper* mapper_a = a.mapper();
    EXPECT_TRUE(a.swap(b));
    EXPECT_STREQ(a.name(), "b");
    EXPECT_STREQ(b.name(), "a");
    EXPECT_EQ(b.mapper(), mapper_a);
}

// ---- the shared empty command -------------------------------------------------------------

TEST(SharedEmptyCommand, ReadsAnswerDefaults) {
    const Command& empty = miss();
    EXPECT_FALSE(empty.isset());
    EXPECT_TRUE(empty.changed());
    for (const char* text : {empty.name(), empty.domain(), empty.mapping(), empty.path(),
                             empty.customer_data(), empty.result_string()}) {
        EXPECT_STREQ(text, "");
    }
    EXPECT_EQ(empty.result(), HMI_E_SUCCESS);
    EXPECT_EQ(empty.extension_result(), 0u);
    EXPECT_EQ(empty.options(), 0u);
    EXPECT_FALSE(empty.has_paging());
    EXPECT_FALSE(empty.has_symbol_options());
    EXPECT_EQ(empty.processed_start().nanoseconds(), 0);
    EXPECT_EQ(empty.processed_end().nanoseconds(), 0);
    EXPECT_EQ(&miss(), &CommandGroup("other")[5]);
}

TEST(SharedEmptyCommand, BothMapperFormsReachTheSharedImplementation) {
    Command& empty = miss();
    const Command& view = empty;
    EXPECT_EQ(view.mapper(), empty.mapper());
    EXPECT_EQ(CommandGroup("any")[7].mapper(), empty.mapper());
    EXPECT_EQ(view.mapper()->flags(), INTERNAL_COMMAND_DEFAULT);
    const Command copy(empty);
    EXPECT_NE(copy.mapper(), empty.mapper());
}

TEST(SharedEmptyCommand, ValueReferencesAreTheSharedEmptyValue) {
    Command& empty = miss();
    const Command& view = empty;
    const Value* shared = &shared_empty_value();
    EXPECT_EQ(&empty.read_value(), shared);
    EXPECT_EQ(&view.read_value(), shared);
    EXPECT_EQ(&empty.write_value(), shared);
    EXPECT_EQ(&view.write_value(), shared);
    EXPECT_EQ(&empty.paging(), shared);
    EXPECT_EQ(&view.paging(), shared);
    EXPECT_EQ(&empty.symbol_options(), shared);
    EXPECT_EQ(&view.symbol_options(), shared);
    // Writes through them are dropped by the value's own guard.
    empty.read_value() = Value(5);
    empty.paging().set(6);
    EXPECT_EQ(empty.read_value().type(), ValueType::Null);
    EXPECT_FALSE(empty.has_paging());
}

TEST(SharedEmptyCommand, SettersAreIgnored) {
    Command& empty = miss();
    empty.set_name("n");
    empty.set_customer_data("c");
    empty.set_result_string("r");
    empty.set_extension_result(1);
    empty.set_options(static_cast<CommandOption>(2));
    empty.set_changed(false);
    empty.set_read_value(Value(3));
    empty.set_write_value(Value(4));
    empty.set_processed_start(Timestamp(5));
    empty.set_processed_end(Timestamp(6));
    empty.set_processed_start();
    empty.set_processed_end();
    EXPECT_STREQ(empty.name(), "");
    EXPECT_STREQ(empty.customer_data(), "");
    EXPECT_STREQ(empty.result_string(), "");
    EXPECT_EQ(empty.extension_result(), 0u);
    EXPECT_EQ(empty.options(), 0u);
    EXPECT_TRUE(empty.changed());
    EXPECT_EQ(empty.read_value().type(), ValueType::Null);
    EXPECT_EQ(empty.write_value().type(), ValueType::Null);
    EXPECT_EQ(empty.processed_start().nanoseconds(), 0);
    EXPECT_EQ(empty.processed_end().nanoseconds(), 0);
}

TEST(SharedEmptyCommand, ACopyIsAnOrdinaryCommandThatIsNotSet) {
    Command copy(miss());
    EXPECT_FALSE(copy.isset());
    copy.set_name("mine");
    copy.set_read_value(Value(1));
    copy.set_changed(false);
    copy.paging() = Value(2);
    EXPECT_STREQ(copy.name(), "mine");
    EXPECT_EQ(copy.read_value().get_int32(), 1);
    EXPECT_FALSE(copy.changed());
    EXPECT_TRUE(copy.has_paging());
    EXPECT_FALSE(copy.isset());
    EXPECT_STREQ(miss().name(), "");
}

TEST_F(SharedEmptyCommandDeathTest, MapperWritesLandInTheSharedImplementation) {
    run([] {
        const CommandGroup group;
        Command& empty = group[group.size()];
        ICommandMapper* mapper = empty.mapper();
        mapper->set_path("Tank1::Level");
        mapper->set_mapping("m");
        mapper->set_domain("d");
        mapper->set_symbol_name("s");
        mapper->set_result(HMI_E_FAIL);
        mapper->set_hash(3);
        mapper->set_last_sent(4);
        mapper->set_symbol_options(Value(5));
        bool ok = check(std::strcmp(miss().path(), "Tank1::Level") == 0, "path");
        ok = check(std::strcmp(miss().mapping(), "m") == 0, "mapping") && ok;
        ok = check(std::strcmp(miss().domain(), "d") == 0, "domain") && ok;
        ok = check(std::strcmp(miss().mapper()->symbol_name(), "s") == 0, "symbol") && ok;
        ok = check(miss().result() == HMI_E_FAIL, "result") && ok;
        ok = check(miss().mapper()->hash() == 3 && miss().mapper()->last_sent() == 4, "h") && ok;
        // Present in the shared implementation, yet a miss never reports options.
        ok = check(!miss().has_symbol_options(), "no symbol options on a miss") && ok;
        mapper->set_flags(static_cast<InternalCommandOption>(0));
        ok = check(!miss().changed(), "flags land too") && ok;
        return ok;
    });
}

TEST_F(SharedEmptyCommandDeathTest, AssignmentTakesOverButStaysInert) {
    run([] {
        Command& empty = miss();
        Command named("assigned");
        named.set_read_value(Value(9));
        empty = named;
        bool ok = check(empty.isset(), "isset after assignment");
        ok = check(std::strcmp(empty.name(), "assigned") == 0, "assigned name") && ok;
        empty.set_name("changed");
        empty.set_read_value(Value(10));
        ok = check(std::strcmp(miss().name(), "assigned") == 0, "setter inert") && ok;
        ok = check(&miss().read_value() == &shared_empty_value(), "still the shared value") && ok;
        ok = check(std::strcmp(named.name(), "assigned") == 0, "source untouched") && ok;
        return ok;
    });
}

TEST_F(SharedEmptyCommandDeathTest, SwapHandsTheSharedImplementationToAnOrdinaryHandle) {
    run([] {
        Command& empty = miss();
        Command mine("mine");
        ICommandMapper* shared = empty.mapper();
        bool ok = check(mine.swap(empty), "swap answers true");
        ok = check(mine.mapper() == shared && !mine.isset(), "mine holds the former empty") && ok;
        mine.set_name("now writable");
        ok = check(std::strcmp(mine.name(), "now writable") == 0, "ordinary handle") && ok;
        // The wrapper now holds "mine"'s former implementation and compares against that.
        ok = check(empty.isset() && std::strcmp(empty.name(), "mine") == 0, "swapped in") && ok;
        empty.set_name("x");
        ok = check(std::strcmp(empty.name(), "mine") == 0, "the wrapper stays inert") && ok;
        return ok;
    });
}

// ---- containers of commands ---------------------------------------------------------------

TEST(CommandContainers, VectorOfCommandsCopiesAndIterates) {
    Vector<Command> commands;
    commands.add(Command("a"));
    commands.add(Command("b"))->set_read_value(Value(2));
    Vector<Command> copy(commands);
    copy.get(0)->set_name("changed");
    EXPECT_STREQ(commands.get(0)->name(), "a");
    std::string names;
    for (VectorIterator<Command> it = commands.begin(); it != commands.end(); ++it) {
        names += it->name();
    }
    EXPECT_EQ(names, "ab");
    const Vector<Command>& view = commands;
    ConstVectorIterator<Command> last = view.begin() + 1;
    EXPECT_EQ(last->read_value().get_int32(), 2);
    EXPECT_EQ(commands.remove(0), HMI_E_SUCCESS);
    EXPECT_EQ(commands.remove(5), HMI_E_ENTRY_NOT_FOUND);
}

TEST(CommandContainers, MapOfCommandsFindsByKey) {
    Map<Command> commands;
    commands.insert("b", Command("second"));
    commands.insert("a", Command("first"));
    ConstIterator<Command> it = static_cast<const Map<Command>&>(commands).begin();
    EXPECT_STREQ(it.name(), "a");
    EXPECT_STREQ(it->name(), "first");
    EXPECT_STREQ(commands.find("b")->name(), "second");
    EXPECT_TRUE(commands.find("c") == commands.end());
    Iterator<Command> found = commands.find("a");
    found->set_name("renamed");
    EXPECT_STREQ(commands.get("a")->name(), "renamed");
}

// ---- robustness ---------------------------------------------------------------------------

TEST(CommandRobustness, ArbitraryTextsAreStoredUpToTheTerminator) {
    for (const std::string& text : request_test::random_texts(424242u, 1500, 48)) {
        Command command(text.c_str());
        command.set_customer_data(text.c_str());
        command.set_result_string(text.c_str());
        ICommandMapper* mapper = command.mapper();
        mapper->set_path(text.c_str());
        mapper->set_symbol_name(text.c_str());
        mapper->set_mapping(text.c_str());
        mapper->set_domain(text.c_str());
        for (const char* stored :
             {command.name(), command.customer_data(), command.result_string(), command.path(),
              mapper->symbol_name(), command.mapping(), command.domain()}) {
            ASSERT_EQ(stored, text);
        }
        ASSERT_TRUE(Command(command) == command);
        ASSERT_EQ(command == Command("a"), text == "a");
    }
}
