#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <random>
#include <string>
#include <type_traits>

using namespace Quorvane;

namespace {

CommandGroup group_of(std::initializer_list<const char*> names, const char* domain = "") {
    CommandGroup group(domain);
    for (const char* name : names) {
        group.insert(group.end_vector(), Command(name));
    }
    return group;
}

std::string names_of(const CommandGroup& group) {
    std::string names;
    for (ConstVectorIterator<Command> it = group.begin_vector(); it != group.end_vector(); ++it) {
        names += it->name();
        names += ';';
    }
    return names;
}

// The library keeps its shared empty group to itself: nothing public leads to it, and its name
// is not exported. To check what it answers, these tests find it through the library's full
// symbol table. Null if the table is missing.
CommandGroup* library_empty_group() {
    void* group =
        request_test::library_address("_ZZN8Quorvane11EmptyValues18empty_CommandGroupEvE7wrapper");
    // The group must exist before it is looked at; initialize_api makes every shared empty.
    Quorvane::initialize_api(nullptr);
    return static_cast<CommandGroup*>(group);
}

CommandGroup& shared_empty_group() {
    static CommandGroup* group = library_empty_group();
    return *group;
}

bool have_shared_empty_group() {
    return library_empty_group() != nullptr;
}

using request_test::check;

class SharedEmptyGroup : public ::testing::Test {
protected:
    void SetUp() override {
        if (!have_shared_empty_group()) {
            GTEST_SKIP() << "the library's symbol table is not available";
        }
    }
};

// Scenarios that write into the shared empty group run in a process of their own.
class SharedEmptyGroupDeathTest : public request_test::ScenarioDeathTest {
protected:
    void SetUp() override {
        if (!have_shared_empty_group()) {
            GTEST_SKIP() << "the library's symbol table is not available";
        }
        ScenarioDeathTest::SetUp();
    }
};

// Looks at the shared empties before anything has made them, so it runs without the set-up
// above, which makes them all.
class SharedEmptyStartUpDeathTest : public request_test::ScenarioDeathTest {};

}  // namespace

// ---- the two faces ------------------------------------------------------------------------

TEST(CommandGroup, IsAnObjectWithAMapperFace) {
    EXPECT_TRUE((std::is_base_of<IObject, CommandGroup>::value));
    EXPECT_TRUE(std::has_virtual_destructor<CommandGroup>::value);
    EXPECT_TRUE(std::is_abstract<ICommandGroupMapper>::value);
    EXPECT_EQ(sizeof(CommandGroupFlags), 4u);
    EXPECT_EQ(sizeof(MapperChangeState), 4u);
}

TEST(CommandGroup, Defaults) {
    CommandGroup group;
    EXPECT_TRUE(group.isset());
    EXPECT_STREQ(group.domain(), "");
    EXPECT_EQ(group.result(), 0u);
    EXPECT_EQ(group.size(), 0u);
    EXPECT_TRUE(group.empty());
    EXPECT_EQ(group.mapper()->change_state(), 1);
    EXPECT_EQ(group.mapper()->change_state(), MAPPER_CHANGE_STATE_DEFAULT);
    EXPECT_EQ(group.mapper()->flags(), 0u);
    EXPECT_TRUE(group.begin_vector() == group.end_vector());
}

TEST(CommandGroup, DomainConstructor) {
    char domain[] = "Plant";
    const CommandGroup group(domain);
    domain[0] = 'X';
    EXPECT_STREQ(group.domain(), "Plant");
    EXPECT_TRUE(group.isset());
    EXPECT_TRUE(group.empty());
}

TEST(CommandGroup, FieldsKeepWhatIsSet) {
    CommandGroup group;
    group.set_domain("Line2");
    group.set_result(4294967295u);
    group.mapper()->set_change_state(static_cast<MapperChangeState>(-7));
    group.mapper()->set_flags(static_cast<CommandGroupFlags>(0xFFFFFFFFu));
    EXPECT_STREQ(group.domain(), "Line2");
    EXPECT_EQ(group.result(), 4294967295u);
    EXPECT_EQ(static_cast<int>(group.mapper()->change_state()), -7);
    EXPECT_EQ(group.mapper()->flags(), 0xFFFFFFFFu);
}

TEST(CommandGroup, UnsetThroughTheMapperIsForGoodButSettersStillWork) {
    CommandGroup group;
    group.mapper()->unset();
    EXPECT_FALSE(group.isset());
    group.set_domain("d");
    group.insert(group.end_vector(), Command("a"));
    EXPECT_STREQ(group.domain(), "d");
    EXPECT_EQ(group.size(), 1u);
}

// ---- positions ----------------------------------------------------------------------------

TEST(CommandGroupCommands, InsertPlacesACopyBeforeThePosition) {
    CommandGroup group;
    Command b("b");
    VectorIterator<Command> at = group.insert(group.end_vector(), b);
    EXPECT_STREQ(at->name(), "b");
    b.set_name("changed");
    at = group.insert(group.begin_vector(), Command("a"));
    EXPECT_STREQ(at->name(), "a");
    group.insert(group.end_vector(), Command("c"));
    group.insert(group.begin_vector() + 1, Command("ab"));
    EXPECT_EQ(names_of(group), "a;ab;b;c;");
    EXPECT_EQ(group.size(), 4u);
    EXPECT_FALSE(group.empty());
}

TEST(CommandGroupCommands, IndexPastTheEndGivesTheSharedEmptyCommand) {
    const CommandGroup group = group_of({"a", "b"});
    EXPECT_STREQ(group[1].name(), "b");
    for (unsigned long index : {2ul, 3ul, ULONG_MAX}) {
        const Command& missing = group[index];
        EXPECT_FALSE(missing.isset()) << index;
        EXPECT_STREQ(missing.name(), "");
    }
    EXPECT_EQ(&group[2], &CommandGroup()[0]);
}

TEST(CommandGroupCommands, IndexedCommandsAreWritableThroughAConstGroup) {
    CommandGroup group = group_of({"a"});
    const CommandGroup& view = group;
    view[0].set_read_value(Value(42));
    EXPECT_EQ(group[0].read_value().get_int32(), 42);
    view[1].set_name("dropped");
    EXPECT_STREQ(view[1].name(), "");
}

TEST(CommandGroupCommands, FindGivesThePositionOrTheEnd) {
    CommandGroup group = group_of({"a", "b", "c"});
    const CommandGroup& view = group;
    EXPECT_STREQ(view.find(1)->name(), "b");
    EXPECT_TRUE(view.find(0) == group.begin_vector());
    EXPECT_TRUE(view.find(3) == group.end_vector());
    EXPECT_TRUE(view.find(ULONG_MAX) == group.end_vector());
    CommandGroup empty;
    EXPECT_TRUE(empty.find(0) == empty.end_vector());
    view.find(2)->set_name("z");
    EXPECT_EQ(names_of(group), "a;b;z;");
}

TEST(CommandGroupCommands, IteratorsWalkInOrder) {
    CommandGroup group = group_of({"x", "y"});
    for (VectorIterator<Command> it = group.begin_vector(); it != group.end_vector(); ++it) {
        it->set_result_string("seen");
    }
    const CommandGroup& view = group;
    long count = 0;
    for (ConstVectorIterator<Command> it = view.begin_vector(); it != view.end_vector(); ++it) {
        EXPECT_STREQ(it->result_string(), "seen");
        ++count;
    }
    EXPECT_EQ(count, 2);
    EXPECT_EQ(group.end_vector() - group.begin_vector(), 2);
}

TEST(CommandGroupCommands, RemoveErasesAndGivesTheFollower) {
    CommandGroup group = group_of({"a", "b", "c"});
    VectorIterator<Command> next = group.remove(group.find(1));
    EXPECT_STREQ(next->name(), "c");
    EXPECT_EQ(names_of(group), "a;c;");
    next = group.remove(group.find(1));
    EXPECT_TRUE(next == group.end_vector());
    EXPECT_TRUE(group.remove(group.end_vector()) == group.end_vector());
    EXPECT_EQ(names_of(group), "a;");
}

TEST(CommandGroupCommands, ReserveAndClear) {
    CommandGroup group = group_of({"a", "b"}, "Plant");
    group.set_result(3);
    group.reserve(100);
    EXPECT_EQ(group.size(), 2u);
    group.clear();
    EXPECT_EQ(group.size(), 0u);
    EXPECT_TRUE(group.empty());
    EXPECT_STREQ(group.domain(), "Plant");
    EXPECT_EQ(group.result(), 3u);
}

// ---- comparison ---------------------------------------------------------------------------

TEST(CommandGroupEquality, NamesInOrderDecide) {
    const struct {
        std::initializer_list<const char*> left;
        std::initializer_list<const char*> right;
        bool equal;
    } rows[] = {
        {{"a", "b"}, {"a", "b"}, true},
        {{"a", "b"}, {"b", "a"}, false},
        {{}, {}, true},
        {{"a"}, {}, false},
        {{"a"}, {"a", "a"}, false},
        {{"a", "b"}, {"a", "B"}, false},
        {{"", ""}, {"", ""}, true},
        {{"a", "a"}, {"a", "a"}, true},
    };
    for (const auto& row : rows) {
        const CommandGroup left = group_of(row.left, "one");
        const CommandGroup right = group_of(row.right, "two");
        EXPECT_EQ(left == right, row.equal) << names_of(left) << " vs " << names_of(right);
        EXPECT_EQ(left != right, !row.equal);
    }
}

TEST(CommandGroupEquality, NothingButTheNamesTakesPart) {
    CommandGroup left = group_of({"a", "b"}, "Plant");
    CommandGroup right = group_of({"a", "b"}, "Other");
    right.set_result(5);
    right.mapper()->set_flags(static_cast<CommandGroupFlags>(9));
    right.mapper()->set_change_state(static_cast<MapperChangeState>(3));
    right.mapper()->unset();
    right[0].set_write_value(Value(1));
    right[1].mapper()->set_result(HMI_E_FAIL);
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
}

TEST(CommandGroupEquality, CopiesCompareEqualWithoutSharingCommands) {
    const CommandGroup group = group_of({"a", "b"});
    const CommandGroup copy(group);
    EXPECT_NE(&group[0], &copy[0]);
    EXPECT_TRUE(group == copy);
    EXPECT_TRUE(group == group);
    EXPECT_FALSE(group != group);
}

// ---- copying and exchanging ---------------------------------------------------------------

TEST(CommandGroupCopy, CopiesEveryCommandAndField) {
    CommandGroup original = group_of({"a", "b"}, "Plant");
    original.set_result(7);
    original.mapper()->set_flags(static_cast<CommandGroupFlags>(8));
    original.mapper()->set_change_state(static_cast<MapperChangeState>(9));
    original[1].set_read_value(Value("r"));
    original.mapper()->unset();
    CommandGroup copy(original);
    EXPECT_FALSE(copy.isset());
    EXPECT_STREQ(copy.domain(), "Plant");
    EXPECT_EQ(copy.result(), 7u);
    EXPECT_EQ(copy.mapper()->flags(), 8u);
    EXPECT_EQ(copy.mapper()->change_state(), 9);
    EXPECT_STREQ(copy[1].read_value().get_string(), "r");
    copy[0].set_name("changed");
    copy.insert(copy.end_vector(), Command("c"));
    EXPECT_EQ(names_of(original), "a;b;");
}

TEST(CommandGroupCopy, AssignmentAndSwap) {
    CommandGroup source = group_of({"a"}, "S");
    CommandGroup target = group_of({"x", "y"}, "T");
    target = source;
    EXPECT_EQ(names_of(target), "a;");
    target[0].set_name("b");
    EXPECT_EQ(names_of(source), "a;");
    ICommandGroupMapper* mapper = source.mapper();
    EXPECT_TRUE(source.swap(target));
    EXPECT_EQ(target.mapper(), mapper);
    EXPECT_EQ(names_of(source), "b;");
}

TEST(CommandGroupCopy, SelfAssignmentKeepsTheGroup) {
    CommandGroup group = group_of({"a", "b"}, "Plant");
    CommandGroup& same = group;
    group = same;
    EXPECT_EQ(names_of(group), "a;b;");
    EXPECT_STREQ(group.domain(), "Plant");
}

TEST(CommandGroupCommands, InsertingACommandOfTheSameGroupCopiesIt) {
    CommandGroup group = group_of({"a"});
    // Enough inserts to make the storage move while the source is one of its elements.
    for (int i = 0; i < 40; ++i) {
        group.insert(group.begin_vector(), group[group.size() - 1]);
    }
    EXPECT_EQ(group.size(), 41u);
    for (unsigned long i = 0; i < group.size(); ++i) {
        ASSERT_STREQ(group[i].name(), "a") << i;
    }
    group[0].set_name("first");
    EXPECT_STREQ(group[1].name(), "a");
}

// ---- the shared empty group ---------------------------------------------------------------

TEST_F(SharedEmptyGroup, ReadsAnswerDefaults) {
    CommandGroup& empty = shared_empty_group();
    EXPECT_FALSE(empty.isset());
    EXPECT_STREQ(empty.domain(), "");
    EXPECT_EQ(empty.result(), 0u);
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_TRUE(empty.empty());
    EXPECT_FALSE(empty[0].isset());
    EXPECT_EQ(&empty[0], &CommandGroup()[0]);
    EXPECT_TRUE(empty.find(0) == empty.end_vector());
    EXPECT_TRUE(empty.begin_vector() == empty.end_vector());
    const CommandGroup& view = empty;
    EXPECT_TRUE(view.begin_vector() == view.end_vector());
    EXPECT_TRUE(empty.remove(empty.end_vector()) == empty.end_vector());
}

TEST_F(SharedEmptyGroup, SettersAndInsertAreIgnored) {
    CommandGroup& empty = shared_empty_group();
    empty.set_domain("d");
    empty.set_result(1);
    empty.reserve(10);
    empty.clear();
    VectorIterator<Command> at = empty.insert(empty.end_vector(), Command("a"));
    EXPECT_TRUE(at == empty.end_vector());
    at = empty.insert(empty.begin_vector(), Command("b"));
    EXPECT_TRUE(at == empty.end_vector());
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_STREQ(empty.domain(), "");
    EXPECT_EQ(empty.result(), 0u);
}

TEST_F(SharedEmptyGroup, ACopyIsAnOrdinaryGroupThatIsNotSet) {
    CommandGroup copy(shared_empty_group());
    EXPECT_FALSE(copy.isset());
    copy.set_domain("mine");
    copy.insert(copy.end_vector(), Command("a"));
    EXPECT_STREQ(copy.domain(), "mine");
    EXPECT_EQ(copy.size(), 1u);
    EXPECT_EQ(shared_empty_group().size(), 0u);
}

TEST_F(SharedEmptyStartUpDeathTest, InitializationCreatesTheSharedEmptiesOfRequests) {
    run([] {
        const char* const guards[] = {
            "_ZGVZN8Quorvane11EmptyValues13empty_CommandEvE7wrapper",
            "_ZGVZN8Quorvane11EmptyValues18empty_CommandGroupEvE7wrapper",
            "_ZGVZN8Quorvane11EmptyValues13empty_SessionEvE14empty_session_",
            "_ZGVZN8Quorvane11EmptyValues15empty_TimestampEvE17empty_timestammp_",
        };
        // A one-time guard's first byte turns non-zero once its object is made.
        const auto made = [](const char* guard) {
            return *static_cast<const unsigned char*>(request_test::library_address(guard)) != 0;
        };
        bool ok = true;
        for (const char* guard : guards) {
            if (request_test::library_address(guard) == nullptr) {
                return true;  // no symbol table to look into
            }
            ok = check(!made(guard), guard) && ok;
        }
        Quorvane::initialize_api(nullptr);
        for (const char* guard : guards) {
            ok = check(made(guard), guard) && ok;
        }
        return check(!shared_empty_group().isset() && shared_empty_group().empty(), "empty") && ok;
    });
}

TEST_F(SharedEmptyGroupDeathTest, MapperWritesLandInTheSharedImplementation) {
    run([] {
        CommandGroup& empty = shared_empty_group();
        empty.mapper()->set_change_state(static_cast<MapperChangeState>(4));
        empty.mapper()->set_flags(static_cast<CommandGroupFlags>(5));
        return check(shared_empty_group().mapper()->change_state() == 4, "change state") &&
               check(shared_empty_group().mapper()->flags() == 5, "flags");
    });
}

TEST_F(SharedEmptyGroupDeathTest, AssignmentTakesOverButStaysInert) {
    run([] {
        CommandGroup& empty = shared_empty_group();
        empty = group_of({"a"}, "assigned");
        bool ok = check(empty.isset(), "isset after assignment");
        ok = check(std::strcmp(empty.domain(), "assigned") == 0, "domain") && ok;
        ok = check(empty.size() == 1 && std::strcmp(empty[0].name(), "a") == 0, "command") && ok;
        empty.set_domain("changed");
        empty.clear();
        VectorIterator<Command> at = empty.insert(empty.end_vector(), Command("b"));
        ok = check(at == empty.end_vector(), "insert refused") && ok;
        ok = check(std::strcmp(empty.domain(), "assigned") == 0, "setter inert") && ok;
        ok = check(empty.size() == 1, "clear and insert inert") && ok;
        // remove has no check and does erase.
        empty.remove(empty.begin_vector());
        return check(empty.size() == 0, "remove works") && ok;
    });
}

TEST_F(SharedEmptyGroupDeathTest, SwapHandsTheSharedImplementationToAnOrdinaryHandle) {
    run([] {
        CommandGroup& empty = shared_empty_group();
        CommandGroup mine("mine");
        bool ok = check(mine.swap(empty), "swap answers true");
        ok = check(!mine.isset(), "mine holds the former empty") && ok;
        mine.set_domain("now writable");
        mine.insert(mine.end_vector(), Command("a"));
        ok = check(std::strcmp(mine.domain(), "now writable") == 0 && mine.size() == 1,
                   "ordinary handle") &&
             ok;
        empty.set_domain("x");
        return check(std::strcmp(empty.domain(), "mine") == 0, "the wrapper stays inert") && ok;
    });
}

// ---- containers of groups -----------------------------------------------------------------

TEST(CommandGroupContainers, VectorOfGroupsCopiesAndIterates) {
    Vector<CommandGroup> groups;
    groups.add(group_of({"a"}, "one"));
    groups.add(group_of({"b", "c"}, "two"));
    Vector<CommandGroup> copy(groups);
    copy.get(1)->clear();
    EXPECT_EQ(groups.get(1)->size(), 2u);
    std::string domains;
    const Vector<CommandGroup>& view = groups;
    for (ConstVectorIterator<CommandGroup> it = view.begin(); it != view.end(); ++it) {
        domains += it->domain();
    }
    EXPECT_EQ(domains, "onetwo");
    VectorIterator<CommandGroup> first = groups.find(0);
    EXPECT_STREQ((*first)[0].name(), "a");
}

TEST(CommandGroupContainers, MapOfGroupsFindsByKey) {
    Map<CommandGroup> groups;
    groups.insert("read", group_of({"a"}));
    groups.insert_or_update("write", group_of({"b"}));
    Iterator<CommandGroup> it = groups.begin();
    EXPECT_STREQ(it.name(), "read");
    ++it;
    EXPECT_STREQ(it.name(), "write");
    EXPECT_STREQ((*it)[0].name(), "b");
    const Map<CommandGroup>& view = groups;
    EXPECT_TRUE(view.find("none") == view.end());
    EXPECT_EQ(groups.get("read")->size(), 1u);
}

// ---- robustness ---------------------------------------------------------------------------

TEST(CommandGroupRobustness, ArbitraryDomainsAreStoredUpToTheTerminator) {
    for (const std::string& text : request_test::random_texts(31337u, 1500, 48)) {
        CommandGroup group(text.c_str());
        ASSERT_EQ(group.domain(), text);
        group.set_domain(text.c_str());
        ASSERT_EQ(group.domain(), text);
        group.insert(group.end_vector(), Command(text.c_str()));
        ASSERT_TRUE(CommandGroup(group) == group);
    }
}
