#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "container_elements.h"

#include <cstdlib>
#include <map>
#include <random>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using Quorvane::ErrorValue;
using Quorvane::IContainer;
using Quorvane::IList;
using Quorvane::IObject;
using Quorvane::Iterator;
using Quorvane::Map;
using Quorvane::String;
using Quorvane::Value;

namespace {

using container_elements::label;
using container_elements::make;

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Key and element label of every entry, walked from begin() to end().
template <class T>
Pairs walk(Map<T>& map) {
    Pairs result;
    for (Iterator<T> at = map.begin(); at != map.end(); ++at) {
        result.emplace_back(at.name(), label(*at));
    }
    return result;
}

template <class T>
Pairs walk_const(const Map<T>& map) {
    Pairs result;
    for (Quorvane::ConstIterator<T> at = map.begin(); at != map.end(); ++at) {
        result.emplace_back(at.name(), label(*at));
    }
    return result;
}

// A keyed collection of nothing, written against the interface alone, so that every slot of
// IList has to be overridable with exactly its declared signature.
class NoList final : public IList {
public:
    unsigned long size() const override { return 0; }
    bool empty() const override { return true; }
    ErrorValue reserve(std::size_t) override { return Quorvane::HMI_E_NOT_IMPLEMENTED; }
    ErrorValue clear() override { return Quorvane::HMI_E_SUCCESS; }
    ErrorValue remove(const char*) override { return Quorvane::HMI_E_ENTRY_NOT_FOUND; }
    IObject* add(const char*, const IObject&) override { return nullptr; }
    IObject* add(const char*) override { return nullptr; }
    IObject* get(const char*) override { return nullptr; }
};

template <class T>
class MapTest : public ::testing::Test {};

using container_elements::ElementTypes;
TYPED_TEST_SUITE(MapTest, ElementTypes);

}  // namespace

TEST(MapInterface, EverySlotCanBeOverriddenWithItsSignature) {
    static_assert(std::is_abstract<IList>::value, "an interface");
    static_assert(std::is_base_of<IContainer, IList>::value, "a container");
    const std::unique_ptr<IList> list(new NoList);
    EXPECT_EQ(list->remove("a"), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(list->get("a"), nullptr);
    EXPECT_EQ(list->add("a"), nullptr);
}

TEST(MapHandle, IsNothingButThePointer) {
    static_assert(sizeof(Map<Value>) == sizeof(void*), "one pointer");
    static_assert(sizeof(Map<String>) == sizeof(void*), "one pointer");
    static_assert(!std::is_polymorphic<Map<Value>>::value, "no virtual destructor");
    SUCCEED();
}

TYPED_TEST(MapTest, EmptyMapAnswersQuietly) {
    Map<TypeParam> map;
    EXPECT_EQ(map.size(), 0u);
    EXPECT_TRUE(map.empty());
    EXPECT_TRUE(map.begin() == map.end());
    EXPECT_EQ(map.get("a"), nullptr);
    EXPECT_TRUE(map.find("a") == map.end());
    EXPECT_EQ(map.remove("a"), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_TRUE(map.remove(map.end()) == map.end());
    EXPECT_TRUE(map.remove(map.begin()) == map.end());
    const Map<TypeParam>& read_only = map;
    EXPECT_TRUE(read_only.begin() == read_only.end());
    EXPECT_TRUE(read_only.find("a") == read_only.end());
    EXPECT_EQ(read_only.get("a"), nullptr);
}

TYPED_TEST(MapTest, InsertKeepsAnExistingElement) {
    Map<TypeParam> map;
    Iterator<TypeParam> first = map.insert("k", make<TypeParam>(1));
    EXPECT_STREQ(first.name(), "k");
    EXPECT_EQ(label(*first), "1");
    Iterator<TypeParam> again = map.insert("k", make<TypeParam>(2));
    EXPECT_TRUE(again == first);
    EXPECT_EQ(label(*again), "1");
    EXPECT_EQ(map.size(), 1u);
}

TYPED_TEST(MapTest, InsertOrUpdateAndAddReplaceAnExistingElement) {
    Map<TypeParam> map;
    map.insert("k", make<TypeParam>(1));
    TypeParam* element = map.get("k");
    Iterator<TypeParam> updated = map.insert_or_update("k", make<TypeParam>(2));
    EXPECT_EQ(label(*updated), "2");
    EXPECT_EQ(&*updated, element);
    TypeParam* added = map.add("k", make<TypeParam>(3));
    EXPECT_EQ(added, element);
    EXPECT_EQ(label(*map.get("k")), "3");
    EXPECT_EQ(map.size(), 1u);
    Iterator<TypeParam> fresh = map.insert_or_update("n", make<TypeParam>(4));
    EXPECT_STREQ(fresh.name(), "n");
    EXPECT_EQ(map.size(), 2u);
}

TYPED_TEST(MapTest, AddWithoutItemGivesTheExistingOrANewDefaultElement) {
    Map<TypeParam> map;
    map.insert("k", make<TypeParam>(1));
    TypeParam* existing = map.add("k");
    EXPECT_EQ(existing, map.get("k"));
    EXPECT_EQ(label(*existing), "1");
    TypeParam* fresh = map.add("new");
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(label(*fresh), label(TypeParam()));
    EXPECT_EQ(map.size(), 2u);
}

TYPED_TEST(MapTest, AddWithANullKeyChangesNothing) {
    Map<TypeParam> map;
    map.insert("k", make<TypeParam>(1));
    EXPECT_EQ(map.add(nullptr, make<TypeParam>(2)), nullptr);
    EXPECT_EQ(map.add(nullptr), nullptr);
    EXPECT_EQ(walk(map), (Pairs{{"k", "1"}}));
}

TYPED_TEST(MapTest, GetAndFindByKey) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    EXPECT_EQ(label(*map.get("b")), "2");
    EXPECT_EQ(&*map.find("a"), map.get("a"));
    EXPECT_STREQ(map.find("b").name(), "b");
    EXPECT_EQ(map.get("c"), nullptr);
    EXPECT_EQ(map.get("A"), nullptr);
    EXPECT_TRUE(map.find("c") == map.end());
    const Map<TypeParam>& read_only = map;
    EXPECT_EQ(read_only.get("a"), map.get("a"));
    EXPECT_EQ(&*read_only.find("a"), map.get("a"));
    EXPECT_STREQ(read_only.find("a").name(), "a");
    EXPECT_TRUE(read_only.find("c") == read_only.end());
}

TYPED_TEST(MapTest, KeysIterateInByteOrder) {
    Map<TypeParam> map;
    const char* keys[] = {"b", "a", "B", "ab", "", "\xC3\xA4", "z", "abc", "A"};
    int number = 0;
    for (const char* key : keys) {
        map.insert(key, make<TypeParam>(number++));
    }
    const Pairs expected = {{"", "4"},    {"A", "8"}, {"B", "2"}, {"a", "1"},       {"ab", "3"},
                            {"abc", "7"}, {"b", "0"}, {"z", "6"}, {"\xC3\xA4", "5"}};
    EXPECT_EQ(walk(map), expected);
    EXPECT_EQ(walk_const(map), expected);
}

TYPED_TEST(MapTest, KeysDifferingOnlyInCaseAreDistinct) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("B", make<TypeParam>(2));
    map.insert("b", make<TypeParam>(3));
    EXPECT_EQ(walk(map), (Pairs{{"B", "2"}, {"a", "1"}, {"b", "3"}}));
}

TYPED_TEST(MapTest, RemoveByKey) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    EXPECT_EQ(map.remove("missing"), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(static_cast<int>(map.remove("missing")), 292);
    EXPECT_EQ(map.remove("a"), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(map.remove("a"), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(walk(map), (Pairs{{"b", "2"}}));
    EXPECT_STREQ(map.begin().name(), "b");
}

TYPED_TEST(MapTest, RemoveByIteratorGivesTheNextInKeyOrder) {
    Map<TypeParam> map;
    map.insert("c", make<TypeParam>(3));
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    Iterator<TypeParam> next = map.remove(map.find("b"));
    EXPECT_STREQ(next.name(), "c");
    next = map.remove(next);
    EXPECT_TRUE(next == map.end());
    EXPECT_TRUE(map.remove(map.end()) == map.end());
    EXPECT_EQ(walk(map), (Pairs{{"a", "1"}}));
    EXPECT_TRUE(map.remove(Iterator<TypeParam>()) == map.end());
}

TYPED_TEST(MapTest, RemoveWithAPositionOfAnotherMapErasesNothing) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    Map<TypeParam> other(map);
    Map<TypeParam> empty;
    EXPECT_TRUE(map.remove(other.find("a")) == map.end());
    EXPECT_TRUE(map.remove(other.end()) == map.end());
    EXPECT_TRUE(map.remove(empty.end()) == map.end());
    EXPECT_TRUE(empty.remove(map.begin()) == empty.end());
    EXPECT_EQ(walk(map), (Pairs{{"a", "1"}, {"b", "2"}}));
    EXPECT_EQ(walk(other), (Pairs{{"a", "1"}, {"b", "2"}}));
    EXPECT_TRUE(empty.empty());
    EXPECT_TRUE(empty.begin() == empty.end());
}

TYPED_TEST(MapTest, ErasingTheFirstMovesBegin) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    Iterator<TypeParam> first = map.begin();
    map.remove(first);
    EXPECT_STREQ(map.begin().name(), "b");
    map.insert("0", make<TypeParam>(0));
    EXPECT_STREQ(map.begin().name(), "0");
    map.remove("0");
    EXPECT_STREQ(map.begin().name(), "b");
}

TYPED_TEST(MapTest, IteratorsSurviveOtherMutations) {
    Map<TypeParam> map;
    map.insert("m", make<TypeParam>(1));
    Iterator<TypeParam> held = map.find("m");
    TypeParam* element = map.get("m");
    for (int number = 0; number < 50; ++number) {
        map.insert(std::to_string(number).c_str(), make<TypeParam>(number));
    }
    map.remove("7");
    map.insert_or_update("m", make<TypeParam>(2));
    EXPECT_STREQ(held.name(), "m");
    EXPECT_EQ(&*held, element);
    EXPECT_EQ(label(*held), "2");
}

TYPED_TEST(MapTest, ReserveIsNotImplementedAndHarmless) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    EXPECT_EQ(map.reserve(10), Quorvane::HMI_E_NOT_IMPLEMENTED);
    EXPECT_EQ(static_cast<int>(map.reserve(10)), 272);
    EXPECT_EQ(map.reserve(0), Quorvane::HMI_E_NOT_IMPLEMENTED);
    map.insert("b", make<TypeParam>(2));
    EXPECT_EQ(walk(map), (Pairs{{"a", "1"}, {"b", "2"}}));
}

TYPED_TEST(MapTest, ClearEmptiesAndGivesSuccess) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", make<TypeParam>(2));
    EXPECT_EQ(map.clear(), Quorvane::HMI_E_SUCCESS);
    EXPECT_TRUE(map.empty());
    EXPECT_TRUE(map.begin() == map.end());
    map.insert("c", make<TypeParam>(3));
    EXPECT_EQ(walk(map), (Pairs{{"c", "3"}}));
}

TYPED_TEST(MapTest, CopyIsDeepAndIndependent) {
    Map<TypeParam> original;
    original.insert("a", make<TypeParam>(1));
    original.insert("b", make<TypeParam>(2));
    Map<TypeParam> copy(original);
    EXPECT_NE(copy.get("a"), original.get("a"));
    copy.remove("a");
    copy.insert_or_update("b", make<TypeParam>(5));
    EXPECT_EQ(walk(original), (Pairs{{"a", "1"}, {"b", "2"}}));
    EXPECT_EQ(walk(copy), (Pairs{{"b", "5"}}));
    EXPECT_STREQ(copy.begin().name(), "b");
}

TYPED_TEST(MapTest, AssignmentReplacesTheContent) {
    Map<TypeParam> target;
    target.insert("x", make<TypeParam>(9));
    Map<TypeParam> source;
    source.insert("a", make<TypeParam>(1));
    target = source;
    EXPECT_EQ(walk(target), (Pairs{{"a", "1"}}));
    EXPECT_NE(target.get("a"), source.get("a"));
}

TYPED_TEST(MapTest, CleanupThenCreateGivesAFreshMap) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.cleanup();
    map.cleanup();
    // Without an implementation, removing by position is still allowed and does nothing.
    map.remove(Iterator<TypeParam>());
    map.create();
    EXPECT_TRUE(map.empty());
    map.insert("b", make<TypeParam>(2));
    EXPECT_EQ(walk(map), (Pairs{{"b", "2"}}));
}

TYPED_TEST(MapTest, AddingAnElementOfTheSameMapCopiesIt) {
    Map<TypeParam> map;
    map.insert("a", make<TypeParam>(1));
    map.insert("b", *map.get("a"));
    map.insert_or_update("a", *map.get("a"));
    map.add("c", *map.get("b"));
    EXPECT_EQ(walk(map), (Pairs{{"a", "1"}, {"b", "1"}, {"c", "1"}}));
}

namespace {

class MapDeathTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

}  // namespace

TEST_F(MapDeathTest, NullKeyEndsTheProcess) {
    Map<Value> map;
    map.insert("a", Value(1));
    EXPECT_DEATH(map.find(nullptr), "");
    EXPECT_DEATH(static_cast<const Map<Value>&>(map).find(nullptr), "");
    EXPECT_DEATH(map.get(nullptr), "");
    EXPECT_DEATH(static_cast<const Map<Value>&>(map).get(nullptr), "");
    EXPECT_DEATH(map.remove(static_cast<const char*>(nullptr)), "");
    EXPECT_DEATH(map.insert(nullptr, Value(2)), "");
    EXPECT_DEATH(map.insert_or_update(nullptr, Value(2)), "");
}

TEST(MapRobustness, RandomByteKeysBehaveLikeAStandardMap) {
    // Arbitrary bytes (NUL ends a key, so it is left out) through every key-taking operation,
    // checked against std::map with its default byte order.
    std::mt19937 random(20240521);
    Map<Value> map;
    std::map<std::string, int> model;
    for (int round = 0; round < 4000; ++round) {
        std::string key(random() % 6, '\0');
        for (char& byte : key) {
            byte = static_cast<char>(1 + random() % 255);
        }
        const int number = static_cast<int>(random() % 1000);
        switch (random() % 6) {
            case 0:
                map.insert(key.c_str(), Value(number));
                model.emplace(key, number);
                break;
            case 1:
                map.insert_or_update(key.c_str(), Value(number));
                model[key] = number;
                break;
            case 2:
                map.add(key.c_str(), Value(number));
                model[key] = number;
                break;
            case 3: {
                const bool present = model.erase(key) == 1;
                EXPECT_EQ(map.remove(key.c_str()),
                          present ? Quorvane::HMI_E_SUCCESS : Quorvane::HMI_E_ENTRY_NOT_FOUND);
                break;
            }
            case 4: {
                const Value* found = map.get(key.c_str());
                const auto expected = model.find(key);
                ASSERT_EQ(found != nullptr, expected != model.end());
                if (found != nullptr) {
                    EXPECT_EQ(found->get_int32(), expected->second);
                }
                break;
            }
            default: {
                const bool present = model.count(key) == 1;
                EXPECT_EQ(map.find(key.c_str()) != map.end(), present);
                break;
            }
        }
    }
    ASSERT_EQ(map.size(), model.size());
    auto expected = model.begin();
    for (Iterator<Value> at = map.begin(); at != map.end(); ++at, ++expected) {
        EXPECT_EQ(at.name(), expected->first);
        EXPECT_EQ(at->get_int32(), expected->second);
    }
}

TEST(MapRobustness, AHugeKeyIsKeptWhole) {
    std::string key(1 << 20, 'k');
    key.back() = '\xFF';
    Map<Value> map;
    map.insert(key.c_str(), Value(1));
    key.back() = 'k';
    map.insert(key.c_str(), Value(2));
    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(map.get(key.c_str())->get_int32(), 2);
    EXPECT_EQ(std::string(map.begin().name()), key);
    EXPECT_EQ(map.remove(key.c_str()), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(map.begin()->get_int32(), 1);
}
