#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>

using Quorvane::ConstIterator;
using Quorvane::ConstVectorIterator;
using Quorvane::IIterator;
using Quorvane::IObject;
using Quorvane::Iterator;
using Quorvane::Map;
using Quorvane::String;
using Quorvane::Value;
using Quorvane::Vector;
using Quorvane::VectorIterator;

namespace {

Vector<Value> numbers(int count) {
    Vector<Value> vector;
    for (int number = 0; number < count; ++number) {
        vector.add(Value(number * 10));
    }
    return vector;
}

Map<String> letters() {
    Map<String> map;
    map.insert("a", String("A"));
    map.insert("b", String("B"));
    map.insert("c", String("C"));
    return map;
}

// Runs `read` and gives the message of the error it raised, or "" when none. The error must be
// a std::runtime_error itself, not a class derived from it.
template <class Read>
std::string error_of(Read read) {
    try {
        read();
    } catch (const std::exception& error) {
        if (typeid(error) != typeid(std::runtime_error)) {
            return std::string("not a plain std::runtime_error: ") + error.what();
        }
        return error.what();
    }
    return "";
}

const char kNotDereferenceable[] = "iterator not dereferrencable";

// True when no ordering of `left` against `right` holds.
template <class Handle>
bool unordered(const Handle& left, const Handle& right) {
    return !(left < right) && !(left > right) && !(left <= right) && !(left >= right);
}

// A walk over nothing, written against the interface alone, so that every slot has to be
// overridable with exactly its declared signature.
class NoWalk final : public IIterator {
public:
    const char* name() override { return "none"; }
    void Next(long count) override { steps += count; }
    void Prev(long count) override { steps -= count; }
    IObject* Current() override { return nullptr; }
    const IObject* Current() const override { return nullptr; }
    bool compare(const IIterator* other) const override { return other == this; }

    long steps = 0;
};

}  // namespace

// ---- the interface ------------------------------------------------------------------------

TEST(IIterator, EverySlotCanBeOverriddenWithItsSignature) {
    static_assert(std::is_same<decltype(&IIterator::name), const char* (IIterator::*)()>::value,
                  "name() is not const");
    static_assert(std::is_same<decltype(&IIterator::compare),
                               bool (IIterator::*)(const IIterator*) const>::value,
                  "compare() is const");
    static_assert(std::is_abstract<IIterator>::value, "an interface");
    static_assert(std::has_virtual_destructor<IIterator>::value, "destroyed through itself");
    NoWalk walk;
    IIterator& through = walk;
    through.Next(3);
    through.Prev(1);
    EXPECT_EQ(walk.steps, 2);
    EXPECT_STREQ(through.name(), "none");
    EXPECT_EQ(through.Current(), nullptr);
    EXPECT_EQ(static_cast<const IIterator&>(through).Current(), nullptr);
    EXPECT_TRUE(through.compare(&walk));
    EXPECT_FALSE(through.compare(nullptr));
}

TEST(IteratorHandles, AreNothingButThePointer) {
    static_assert(sizeof(VectorIterator<Value>) == sizeof(void*), "one pointer");
    static_assert(sizeof(ConstVectorIterator<Value>) == sizeof(void*), "one pointer");
    static_assert(sizeof(Iterator<String>) == sizeof(void*), "one pointer");
    static_assert(sizeof(ConstIterator<String>) == sizeof(void*), "one pointer");
    SUCCEED();
}

// ---- vector iterators ---------------------------------------------------------------------

TEST(VectorIterator, DereferencingTheEndOfAnEmptyVectorThrows) {
    Vector<Value> vector;
    EXPECT_TRUE(vector.begin() == vector.end());
    EXPECT_EQ(error_of([&] { *vector.begin(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { vector.end()->get_int32(); }), kNotDereferenceable);
    const Vector<Value>& read_only = vector;
    EXPECT_EQ(error_of([&] { *read_only.begin(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { read_only.end()->get_int32(); }), kNotDereferenceable);
}

TEST(VectorIterator, DereferencingTheEndOfAFilledVectorThrows) {
    Vector<Value> vector = numbers(2);
    EXPECT_EQ(error_of([&] { *vector.end(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { vector.begin()[2]; }), kNotDereferenceable);
}

TEST(VectorIterator, NameIsAlwaysTheEmptyText) {
    Vector<Value> vector = numbers(1);
    EXPECT_STREQ(vector.begin().name(), "");
    EXPECT_EQ(error_of([&] { EXPECT_STREQ(vector.end().name(), ""); }), "");
    Vector<Value> empty;
    EXPECT_EQ(error_of([&] { EXPECT_STREQ(empty.begin().name(), ""); }), "");
    const Vector<Value>& read_only = vector;
    EXPECT_STREQ(read_only.begin().name(), "");
    EXPECT_EQ(error_of([&] { EXPECT_STREQ(read_only.end().name(), ""); }), "");
}

TEST(VectorIterator, DistanceAndOffsetsFollowTheSize) {
    Vector<Value> vector = numbers(5);
    EXPECT_EQ(vector.end() - vector.begin(), 5);
    EXPECT_EQ(vector.begin() - vector.end(), -5);
    EXPECT_TRUE(vector.begin() + 5 == vector.end());
    EXPECT_TRUE(vector.end() - 5 == vector.begin());
    EXPECT_EQ((vector.begin() + 3)->get_int32(), 30);
    EXPECT_EQ((vector.end() - 1)->get_int32(), 40);
    VectorIterator<Value> at = vector.begin();
    VectorIterator<Value> moved = at + 2;
    EXPECT_EQ(at->get_int32(), 0);
    EXPECT_EQ(moved - at, 2);
    Vector<Value> empty;
    EXPECT_EQ(empty.end() - empty.begin(), 0);
}

TEST(VectorIterator, SubscriptMovesTheIterator) {
    Vector<Value> vector = numbers(4);
    VectorIterator<Value> at = vector.begin();
    EXPECT_EQ(at[2].get_int32(), 20);
    EXPECT_EQ(at - vector.begin(), 2);
    EXPECT_EQ(at->get_int32(), 20);
    at[1] = 99;
    EXPECT_EQ(vector.get(3)->get_int32(), 99);
}

TEST(VectorIterator, IncrementAndDecrementInBothForms) {
    Vector<Value> vector = numbers(3);
    VectorIterator<Value> at = vector.begin();
    EXPECT_EQ((++at)->get_int32(), 10);
    VectorIterator<Value> before = at++;
    EXPECT_EQ(before->get_int32(), 10);
    EXPECT_EQ(at->get_int32(), 20);
    before = at--;
    EXPECT_EQ(before->get_int32(), 20);
    EXPECT_EQ(at->get_int32(), 10);
    EXPECT_EQ((--at)->get_int32(), 0);
    at += 3;
    EXPECT_TRUE(at == vector.end());
    at -= 2;
    EXPECT_EQ(at->get_int32(), 10);
}

TEST(VectorIterator, NegativeStepsMoveBackwards) {
    Vector<Value> vector = numbers(4);
    VectorIterator<Value> at = vector.begin() + 2;
    at += static_cast<std::size_t>(-1);
    EXPECT_EQ(at->get_int32(), 10);
    at -= static_cast<std::size_t>(-2);
    EXPECT_EQ(at->get_int32(), 30);
    VectorIterator<Value> back = vector.begin() + 3;
    EXPECT_EQ(back[static_cast<std::size_t>(-3)].get_int32(), 0);
}

TEST(VectorIterator, OrderingComparesPositions) {
    Vector<Value> vector = numbers(3);
    VectorIterator<Value> first = vector.begin();
    VectorIterator<Value> second = vector.begin() + 1;
    EXPECT_TRUE(first < second);
    EXPECT_FALSE(second < first);
    EXPECT_TRUE(second > first);
    EXPECT_FALSE(first > second);
    EXPECT_TRUE(first <= second);
    EXPECT_TRUE(first <= vector.begin());
    EXPECT_TRUE(second >= first);
    EXPECT_TRUE(second >= second + 0);
    EXPECT_FALSE(first >= second);
    EXPECT_FALSE(second <= first);
    EXPECT_TRUE(vector.end() > second);
}

TEST(VectorIterator, OrderingWithAnEmptyHandleOnEitherSideIsFalse) {
    Vector<Value> vector = numbers(1);
    const VectorIterator<Value> none;
    const VectorIterator<Value> at = vector.begin();
    EXPECT_TRUE(unordered(at, none));
    EXPECT_TRUE(unordered(none, at));
    EXPECT_TRUE(unordered(none, none));
    const ConstVectorIterator<Value> const_none;
    const ConstVectorIterator<Value> const_at = at;
    EXPECT_TRUE(unordered(const_at, const_none));
    EXPECT_TRUE(unordered(const_none, const_at));
}

TEST(VectorIterator, OffsetsBeyondEitherEndComeBack) {
    Vector<Value> vector = numbers(3);
    VectorIterator<Value> far = vector.begin() + 10;
    EXPECT_EQ(far - vector.begin(), 10);
    EXPECT_EQ(vector.begin() - far, -10);
    EXPECT_TRUE(far - 10 == vector.begin());
    EXPECT_TRUE(far > vector.end());
    VectorIterator<Value> before = vector.begin() - 4;
    EXPECT_EQ(before - vector.begin(), -4);
    EXPECT_TRUE(before < vector.begin());
    before += 4;
    EXPECT_EQ(before->get_int32(), 0);
    before -= 7;
    before += 9;
    EXPECT_EQ(before->get_int32(), 20);
}

TEST(VectorIterator, EmptyHandleOnTheLeftIsUnequal) {
    Vector<Value> vector = numbers(1);
    const VectorIterator<Value> none;
    EXPECT_FALSE(none == vector.begin());
    EXPECT_TRUE(none != vector.begin());
    const ConstVectorIterator<Value> const_none;
    const Vector<Value>& read_only = vector;
    EXPECT_FALSE(const_none == read_only.begin());
    EXPECT_TRUE(const_none != read_only.begin());
}

TEST(VectorIterator, WritesReachTheElement) {
    Vector<Value> vector = numbers(2);
    *vector.begin() = 5;
    (vector.begin() + 1)->set(6);
    EXPECT_EQ(vector.get(0)->get_int32(), 5);
    EXPECT_EQ(vector.get(1)->get_int32(), 6);
}

TEST(VectorIterator, CopyAndAssignmentKeepThePosition) {
    Vector<Value> vector = numbers(3);
    VectorIterator<Value> at = vector.begin() + 1;
    VectorIterator<Value> copy(at);
    EXPECT_TRUE(copy == at);
    ++copy;
    EXPECT_FALSE(copy == at);
    VectorIterator<Value> assigned;
    assigned = copy;
    EXPECT_TRUE(assigned == copy);
    EXPECT_EQ(assigned->get_int32(), 20);
}

TEST(ConstVectorIterator, BuiltFromTheSamePositionCompareEqual) {
    Vector<Value> vector = numbers(3);
    VectorIterator<Value> at = vector.begin() + 1;
    ConstVectorIterator<Value> one(at);
    ConstVectorIterator<Value> other(at);
    EXPECT_TRUE(one == other);
    EXPECT_FALSE(one != other);
    EXPECT_EQ(&*one, &*at);
    EXPECT_EQ(one->get_int32(), 10);
    const Vector<Value>& read_only = vector;
    EXPECT_TRUE(ConstVectorIterator<Value>(vector.begin()) == read_only.begin());
    EXPECT_TRUE(ConstVectorIterator<Value>(vector.end()) == read_only.end());
}

TEST(ConstVectorIterator, ArithmeticAndOrderingMatchTheMutableOne) {
    const Vector<Value> vector = numbers(4);
    ConstVectorIterator<Value> at = vector.begin();
    EXPECT_EQ(vector.end() - vector.begin(), 4);
    EXPECT_EQ(vector.begin() - vector.end(), -4);
    EXPECT_TRUE(vector.begin() + 4 == vector.end());
    EXPECT_TRUE(vector.end() - 4 == vector.begin());
    EXPECT_EQ((++at)->get_int32(), 10);
    ConstVectorIterator<Value> before = at++;
    EXPECT_EQ(before->get_int32(), 10);
    before = at--;
    EXPECT_EQ(before->get_int32(), 20);
    EXPECT_EQ((--at)->get_int32(), 0);
    at += 3;
    EXPECT_EQ((*at).get_int32(), 30);
    at -= 1;
    EXPECT_EQ(at->get_int32(), 20);
    EXPECT_TRUE(vector.begin() < at);
    EXPECT_TRUE(at > vector.begin());
    EXPECT_TRUE(at <= at + 0);
    EXPECT_TRUE(at >= vector.begin());
    EXPECT_FALSE(at < vector.begin());
}

TEST(ConstVectorIterator, SubscriptMovesAndReadsNoElement) {
    // The read-only subscript reads the writable Current(), which a const iterator answers with
    // null rather than an error: it moves, and raises nothing even where it lands on the end.
    const Vector<Value> vector = numbers(3);
    ConstVectorIterator<Value> at = vector.begin();
    EXPECT_EQ(error_of([&] { at[2]; }), "");
    EXPECT_EQ(at - vector.begin(), 2);
    EXPECT_EQ(at->get_int32(), 20);
    EXPECT_EQ(error_of([&] { at[1]; }), "");
    EXPECT_TRUE(at == vector.end());
    EXPECT_EQ(error_of([&] { *at; }), kNotDereferenceable);
}

TEST(ConstVectorIterator, CopyAndAssignmentKeepThePosition) {
    const Vector<Value> vector = numbers(2);
    ConstVectorIterator<Value> at = vector.begin();
    ConstVectorIterator<Value> copy(at);
    EXPECT_TRUE(copy == at);
    ConstVectorIterator<Value> assigned;
    assigned = vector.end();
    EXPECT_TRUE(assigned == vector.end());
}

// ---- map iterators ------------------------------------------------------------------------

TEST(MapIterator, WalksInKeyOrderBothWays) {
    Map<String> map = letters();
    Iterator<String> at = map.begin();
    EXPECT_STREQ(at.name(), "a");
    EXPECT_STREQ(at->name(), "A");
    EXPECT_STREQ((++at).name(), "b");
    Iterator<String> before = at++;
    EXPECT_STREQ(before.name(), "b");
    EXPECT_STREQ(at.name(), "c");
    ++at;
    EXPECT_TRUE(at == map.end());
    EXPECT_STREQ((--at).name(), "c");
    before = at--;
    EXPECT_STREQ(before.name(), "c");
    EXPECT_STREQ((*at).name(), "B");
}

TEST(MapIterator, NameAndDereferenceAtTheEndThrow) {
    Map<String> map = letters();
    EXPECT_EQ(error_of([&] { map.end().name(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { *map.end(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { map.end()->name(); }), kNotDereferenceable);
    Map<String> empty;
    EXPECT_EQ(error_of([&] { empty.begin().name(); }), kNotDereferenceable);
    const Map<String>& read_only = map;
    EXPECT_EQ(error_of([&] { read_only.end().name(); }), kNotDereferenceable);
    EXPECT_EQ(error_of([&] { *read_only.end(); }), kNotDereferenceable);
}

TEST(MapIterator, SubscriptTakesStepsAndIgnoresNonPositiveCounts) {
    Map<String> map = letters();
    Iterator<String> at = map.begin();
    EXPECT_STREQ(at[0].name(), "A");
    EXPECT_STREQ(at.name(), "a");
    // A count that reads as negative takes no step on a map.
    EXPECT_STREQ(at[static_cast<std::size_t>(-1)].name(), "A");
    EXPECT_STREQ(at.name(), "a");
    EXPECT_STREQ(at[2].name(), "C");
    EXPECT_STREQ(at.name(), "c");
}

TEST(MapIterator, NoStepIsTakenBeyondEitherEnd) {
    Map<String> map = letters();
    Iterator<String> at = map.end();
    ++at;
    EXPECT_TRUE(at == map.end());
    EXPECT_STREQ((--at).name(), "c");
    Iterator<String> first = map.begin();
    first--;
    EXPECT_STREQ(first.name(), "a");
    // A huge count stops at the end instead of walking on.
    Iterator<String> walker = map.begin();
    EXPECT_EQ(error_of([&] { walker[static_cast<std::size_t>(LONG_MAX)]; }), kNotDereferenceable);
    EXPECT_TRUE(walker == map.end());
    Map<String> empty;
    Iterator<String> none = empty.end();
    --none;
    none++;
    EXPECT_TRUE(none == empty.begin());
    const Map<String>& read_only = map;
    ConstIterator<String> constant = read_only.end();
    ++constant;
    EXPECT_TRUE(constant == read_only.end());
    constant = read_only.begin();
    --constant;
    EXPECT_STREQ(constant.name(), "a");
}

TEST(MapIterator, WritesReachTheElement) {
    Map<String> map = letters();
    map.begin()->set_name("changed");
    EXPECT_STREQ(map.get("a")->name(), "changed");
    (*map.find("b")).set_name("too");
    EXPECT_STREQ(map.get("b")->name(), "too");
}

TEST(MapIterator, EmptyHandleOnTheLeftIsUnequal) {
    Map<String> map = letters();
    const Iterator<String> none;
    EXPECT_FALSE(none == map.begin());
    EXPECT_TRUE(none != map.begin());
    const ConstIterator<String> const_none;
    const Map<String>& read_only = map;
    EXPECT_FALSE(const_none == read_only.begin());
    EXPECT_TRUE(const_none != read_only.begin());
}

TEST(MapIterator, CopyAndAssignmentKeepThePosition) {
    Map<String> map = letters();
    Iterator<String> at = map.find("b");
    Iterator<String> copy(at);
    EXPECT_TRUE(copy == at);
    ++copy;
    EXPECT_TRUE(copy != at);
    Iterator<String> assigned;
    assigned = copy;
    EXPECT_STREQ(assigned.name(), "c");
}

TEST(ConstMapIterator, BuiltFromAnIteratorReadsTheSameElement) {
    Map<String> map = letters();
    Iterator<String> at = map.find("b");
    ConstIterator<String> one(at);
    ConstIterator<String> other(at);
    EXPECT_TRUE(one == other);
    EXPECT_STREQ(one.name(), "b");
    EXPECT_EQ(&*one, &*at);
    EXPECT_STREQ(one->name(), "B");
    ConstIterator<String> before = one++;
    EXPECT_STREQ(before.name(), "b");
    EXPECT_STREQ(one.name(), "c");
    EXPECT_STREQ((--one).name(), "b");
    before = one--;
    EXPECT_STREQ(before.name(), "b");
    EXPECT_STREQ((++one).name(), "b");
    ConstIterator<String> copy(one);
    EXPECT_TRUE(copy == one);
    const Map<String>& read_only = map;
    EXPECT_TRUE(ConstIterator<String>(map.end()) == read_only.end());
}

TEST(ConstMapIterator, SubscriptMovesAndReadsNoElement) {
    const Map<String> map = letters();
    ConstIterator<String> at = map.begin();
    EXPECT_EQ(error_of([&] { at[1]; }), "");
    EXPECT_STREQ(at.name(), "b");
    EXPECT_EQ(error_of([&] { at[static_cast<std::size_t>(-1)]; }), "");
    EXPECT_STREQ(at.name(), "b");
    EXPECT_EQ(error_of([&] { at[2]; }), "");
    EXPECT_TRUE(at == map.end());
    EXPECT_EQ(error_of([&] { at.name(); }), kNotDereferenceable);
}

TEST(MapIterator, HeldIteratorSurvivesErasingAnotherElement) {
    Map<String> map = letters();
    Iterator<String> held = map.find("c");
    map.remove("a");
    map.remove(map.find("b"));
    EXPECT_STREQ(held.name(), "c");
    EXPECT_TRUE(held == map.begin());
}
