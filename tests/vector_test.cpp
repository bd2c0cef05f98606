#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "container_elements.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using Quorvane::ErrorValue;
using Quorvane::IContainer;
using Quorvane::IObject;
using Quorvane::IVector;
using Quorvane::String;
using Quorvane::Value;
using Quorvane::Vector;
using Quorvane::VectorIterator;

namespace {

using container_elements::label;
using container_elements::make;

template <class T>
std::vector<std::string> labels(const Vector<T>& vector) {
    std::vector<std::string> result;
    for (unsigned long index = 0; index < vector.size(); ++index) {
        result.push_back(label(*vector.get(index)));
    }
    return result;
}

template <class T>
Vector<T> numbered(int count) {
    Vector<T> vector;
    for (int number = 0; number < count; ++number) {
        vector.add(make<T>(number));
    }
    return vector;
}

// The cached iterators must frame the sequence after every mutation.
template <class T>
void expect_frame(Vector<T>& vector) {
    EXPECT_EQ(vector.end() - vector.begin(), static_cast<long>(vector.size()));
    if (!vector.empty()) {
        EXPECT_EQ(&*vector.begin(), vector.get(0));
    } else {
        EXPECT_TRUE(vector.begin() == vector.end());
    }
}

// A sequence of nothing, written against the interfaces alone, so that every slot of IContainer
// and IVector has to be overridable with exactly its declared signature.
class NoSequence final : public IVector {
public:
    unsigned long size() const override { return 0; }
    bool empty() const override { return true; }
    ErrorValue reserve(std::size_t) override { return Quorvane::HMI_E_SUCCESS; }
    ErrorValue clear() override { return Quorvane::HMI_E_SUCCESS; }
    IObject* add(const IObject&) override { return nullptr; }
    IObject* add(std::size_t) override { return nullptr; }
    IObject* add() override { return nullptr; }
    IObject* get(std::size_t) override { return nullptr; }
    ErrorValue remove(std::size_t) override { return Quorvane::HMI_E_ENTRY_NOT_FOUND; }
    ErrorValue remove(std::size_t, std::size_t) override { return Quorvane::HMI_E_ENTRY_NOT_FOUND; }
};

template <class T>
class VectorTest : public ::testing::Test {};

using container_elements::ElementTypes;
TYPED_TEST_SUITE(VectorTest, ElementTypes);

}  // namespace

TEST(VectorInterface, EverySlotCanBeOverriddenWithItsSignature) {
    static_assert(std::is_abstract<IVector>::value, "an interface");
    static_assert(std::is_base_of<IContainer, IVector>::value, "a container");
    static_assert(std::has_virtual_destructor<IContainer>::value, "destroyed through itself");
    const std::unique_ptr<IContainer> container(new NoSequence);
    EXPECT_EQ(container->size(), 0u);
    EXPECT_TRUE(container->empty());
    EXPECT_EQ(container->reserve(1), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(container->clear(), Quorvane::HMI_E_SUCCESS);
}

TEST(VectorHandle, IsNothingButThePointer) {
    static_assert(sizeof(Vector<Value>) == sizeof(void*), "one pointer");
    static_assert(sizeof(Vector<String>) == sizeof(void*), "one pointer");
    static_assert(!std::is_polymorphic<Vector<Value>>::value, "no virtual destructor");
    SUCCEED();
}

TYPED_TEST(VectorTest, EmptyVectorAnswersQuietly) {
    Vector<TypeParam> vector;
    EXPECT_EQ(vector.size(), 0u);
    EXPECT_TRUE(vector.empty());
    EXPECT_TRUE(vector.begin() == vector.end());
    EXPECT_EQ(vector.get(0), nullptr);
    EXPECT_TRUE(vector.find(0) == vector.end());
    EXPECT_EQ(vector.remove(0), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(vector.remove(0, 0), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(static_cast<int>(vector.remove(0)), 292);
    EXPECT_EQ(static_cast<int>(vector.remove(0, 0)), 292);
    const Vector<TypeParam>& read_only = vector;
    EXPECT_EQ(read_only.get(0), nullptr);
    EXPECT_TRUE(read_only.begin() == read_only.end());
    EXPECT_TRUE(read_only.find(0) == read_only.end());
}

TYPED_TEST(VectorTest, AddAppendsCopiesInOrder) {
    Vector<TypeParam> vector;
    const TypeParam first = make<TypeParam>(7);
    TypeParam* added = vector.add(first);
    ASSERT_NE(added, nullptr);
    EXPECT_NE(added, &first);
    EXPECT_EQ(label(*added), "7");
    vector.add(make<TypeParam>(8));
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"7", "8"}));
    EXPECT_FALSE(vector.empty());
    expect_frame(vector);
}

TYPED_TEST(VectorTest, AddWithoutItemAppendsDefaultElement) {
    Vector<TypeParam> vector = numbered<TypeParam>(1);
    TypeParam* added = vector.add();
    EXPECT_EQ(added, vector.get(1));
    EXPECT_EQ(label(*added), label(TypeParam()));
    expect_frame(vector);
}

TYPED_TEST(VectorTest, AddByIndexPastTheEndAppendsAtTheSize) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    TypeParam* added = vector.add(std::size_t{10});
    EXPECT_EQ(vector.size(), 4u);
    EXPECT_EQ(added, vector.get(3));
    EXPECT_EQ(label(*added), label(TypeParam()));
    EXPECT_EQ(vector.get(10), nullptr);
    expect_frame(vector);
}

TYPED_TEST(VectorTest, AddByIndexOfAnExistingElementReturnsIt) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    TypeParam* second = vector.get(1);
    EXPECT_EQ(vector.add(std::size_t{1}), second);
    EXPECT_EQ(vector.size(), 3u);
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "1", "2"}));
}

TYPED_TEST(VectorTest, GetAndFindByIndex) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    for (std::size_t index = 0; index < 3; ++index) {
        ASSERT_NE(vector.get(index), nullptr);
        EXPECT_EQ(label(*vector.get(index)), std::to_string(index));
        EXPECT_EQ(&*vector.find(index), vector.get(index));
        const Vector<TypeParam>& read_only = vector;
        EXPECT_EQ(read_only.get(index), vector.get(index));
        EXPECT_EQ(&*read_only.find(index), vector.get(index));
    }
    EXPECT_EQ(vector.get(3), nullptr);
    EXPECT_TRUE(vector.find(3) == vector.end());
    EXPECT_TRUE(vector.find(99) == vector.end());
    const Vector<TypeParam>& read_only = vector;
    EXPECT_TRUE(read_only.find(3) == read_only.end());
}

TYPED_TEST(VectorTest, RemoveByIndexShiftsTheRest) {
    Vector<TypeParam> vector = numbered<TypeParam>(4);
    EXPECT_EQ(vector.remove(1), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "2", "3"}));
    expect_frame(vector);
    EXPECT_EQ(vector.remove(2), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "2"}));
    EXPECT_EQ(vector.remove(2), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "2"}));
    EXPECT_EQ(vector.remove(0), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(vector.remove(0), Quorvane::HMI_E_SUCCESS);
    EXPECT_TRUE(vector.empty());
    expect_frame(vector);
}

TYPED_TEST(VectorTest, RemoveRangeFollowsItsBoundaryRules) {
    const struct {
        std::size_t first;
        std::size_t last;
        ErrorValue result;
        std::vector<std::string> left;
    } rows[] = {
        {1, 1, Quorvane::HMI_E_SUCCESS, {"0", "1", "2"}},
        {3, 5, Quorvane::HMI_E_SUCCESS, {"0", "1", "2"}},
        {3, 3, Quorvane::HMI_E_SUCCESS, {"0", "1", "2"}},
        {4, 5, Quorvane::HMI_E_ENTRY_NOT_FOUND, {"0", "1", "2"}},
        {2, 1, Quorvane::HMI_E_ENTRY_NOT_FOUND, {"0", "1", "2"}},
        {1, 99, Quorvane::HMI_E_SUCCESS, {"0"}},
        {0, 3, Quorvane::HMI_E_SUCCESS, {}},
        {0, 1, Quorvane::HMI_E_SUCCESS, {"1", "2"}},
        {1, 2, Quorvane::HMI_E_SUCCESS, {"0", "2"}},
        {2, 3, Quorvane::HMI_E_SUCCESS, {"0", "1"}},
        {0, 2, Quorvane::HMI_E_SUCCESS, {"2"}},
        {2, 7, Quorvane::HMI_E_SUCCESS, {"0", "1"}},
    };
    for (const auto& row : rows) {
        Vector<TypeParam> vector = numbered<TypeParam>(3);
        EXPECT_EQ(vector.remove(row.first, row.last), row.result) << row.first << ", " << row.last;
        EXPECT_EQ(labels(vector), row.left) << row.first << ", " << row.last;
        expect_frame(vector);
    }
}

TYPED_TEST(VectorTest, RemoveRangeOnEmptyVectorIsNotFound) {
    Vector<TypeParam> vector;
    EXPECT_EQ(vector.remove(0, 1), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(vector.remove(0, 0), Quorvane::HMI_E_ENTRY_NOT_FOUND);
}

TYPED_TEST(VectorTest, RemoveByIteratorGivesTheFollowingElement) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    VectorIterator<TypeParam> next = vector.remove(vector.find(1));
    EXPECT_EQ(label(*next), "2");
    EXPECT_EQ(next - vector.begin(), 1);
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "2"}));
    expect_frame(vector);
    next = vector.remove(vector.find(1));
    EXPECT_TRUE(next == vector.end());
    next = vector.remove(vector.begin());
    EXPECT_TRUE(next == vector.begin());
    EXPECT_TRUE(vector.empty());
}

TYPED_TEST(VectorTest, RemoveAtTheEndChangesNothing) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    VectorIterator<TypeParam> result = vector.remove(vector.end());
    EXPECT_TRUE(result == vector.end());
    EXPECT_EQ(vector.size(), 3u);
    Vector<TypeParam> empty;
    EXPECT_TRUE(empty.remove(empty.end()) == empty.end());
    EXPECT_TRUE(empty.remove(empty.begin()) == empty.end());
}

TYPED_TEST(VectorTest, RemoveWithAnEmptyIteratorHandleChangesNothing) {
    Vector<TypeParam> vector = numbered<TypeParam>(2);
    EXPECT_TRUE(vector.remove(VectorIterator<TypeParam>()) == vector.end());
    EXPECT_EQ(vector.size(), 2u);
}

TYPED_TEST(VectorTest, APositionOfAnotherVectorAppendsAndErasesNothing) {
    Vector<TypeParam> vector = numbered<TypeParam>(2);
    Vector<TypeParam> other = numbered<TypeParam>(3);
    EXPECT_TRUE(vector.remove(other.begin()) == vector.end());
    EXPECT_TRUE(vector.remove(other.find(1)) == vector.end());
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "1"}));
    VectorIterator<TypeParam> at = vector.insert(other.begin(), make<TypeParam>(7));
    EXPECT_EQ(at - vector.begin(), 2);
    at = vector.insert(VectorIterator<TypeParam>(), make<TypeParam>(8));
    EXPECT_EQ(at - vector.begin(), 3);
    EXPECT_EQ(label(*at), "8");
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"0", "1", "7", "8"}));
    EXPECT_EQ(labels(other), (std::vector<std::string>{"0", "1", "2"}));
    expect_frame(vector);
    expect_frame(other);
}

TYPED_TEST(VectorTest, InsertPlacesBeforeThePosition) {
    Vector<TypeParam> vector = numbered<TypeParam>(2);
    VectorIterator<TypeParam> at = vector.insert(vector.begin(), make<TypeParam>(7));
    EXPECT_EQ(label(*at), "7");
    EXPECT_TRUE(at == vector.begin());
    at = vector.insert(vector.find(2), make<TypeParam>(8));
    EXPECT_EQ(label(*at), "8");
    EXPECT_EQ(at - vector.begin(), 2);
    at = vector.insert(vector.end(), make<TypeParam>(9));
    EXPECT_EQ(label(*at), "9");
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"7", "0", "8", "1", "9"}));
    expect_frame(vector);
}

TYPED_TEST(VectorTest, InsertWorksInAnEmptyVector) {
    Vector<TypeParam> vector;
    VectorIterator<TypeParam> at = vector.insert(vector.end(), make<TypeParam>(4));
    EXPECT_EQ(label(*at), "4");
    EXPECT_EQ(vector.size(), 1u);
    expect_frame(vector);
}

TYPED_TEST(VectorTest, ManyAppendsAndInsertsKeepEveryElement) {
    Vector<TypeParam> vector;
    std::vector<std::string> expected;
    for (int number = 0; number < 300; ++number) {
        if (number % 3 == 0) {
            vector.insert(vector.begin(), make<TypeParam>(number));
            expected.insert(expected.begin(), std::to_string(number));
        } else {
            vector.add(make<TypeParam>(number));
            expected.push_back(std::to_string(number));
        }
    }
    EXPECT_EQ(labels(vector), expected);
    expect_frame(vector);
}

TYPED_TEST(VectorTest, AddingAnElementOfTheSameVectorCopiesIt) {
    // The growth steps fall inside the loop, where the item is an element about to move.
    Vector<TypeParam> vector = numbered<TypeParam>(1);
    for (int round = 0; round < 10; ++round) {
        vector.add(*vector.get(0));
        vector.insert(vector.begin(), *vector.get(vector.size() - 1));
    }
    EXPECT_EQ(labels(vector), std::vector<std::string>(21, "0"));
}

TYPED_TEST(VectorTest, ClearEmptiesAndGivesSuccess) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    EXPECT_EQ(vector.clear(), Quorvane::HMI_E_SUCCESS);
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.size(), 0u);
    expect_frame(vector);
    vector.add(make<TypeParam>(5));
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"5"}));
}

TYPED_TEST(VectorTest, ClearKeepsTheCapacity) {
    Vector<TypeParam> vector;
    vector.reserve(50);
    vector.add(make<TypeParam>(0));
    vector.clear();
    TypeParam* first = vector.add(make<TypeParam>(1));
    for (int number = 2; number < 50; ++number) {
        vector.add(make<TypeParam>(number));
    }
    // Within the capacity reserved before the clear nothing moved.
    EXPECT_EQ(vector.get(0), first);
    EXPECT_EQ(vector.size(), 49u);
}

TYPED_TEST(VectorTest, ReserveGrowsTheCapacity) {
    Vector<TypeParam> vector = numbered<TypeParam>(1);
    EXPECT_EQ(vector.reserve(100), Quorvane::HMI_E_SUCCESS);
    expect_frame(vector);
    TypeParam* first = vector.get(0);
    for (int number = 1; number < 100; ++number) {
        vector.add(make<TypeParam>(number));
    }
    // No reallocation within the reserved capacity: the first element never moved.
    EXPECT_EQ(vector.get(0), first);
    EXPECT_EQ(vector.reserve(0), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(vector.size(), 100u);
}

TYPED_TEST(VectorTest, CopyIsDeepAndIndependent) {
    Vector<TypeParam> original = numbered<TypeParam>(3);
    Vector<TypeParam> copy(original);
    EXPECT_NE(copy.get(0), original.get(0));
    copy.add(make<TypeParam>(3));
    copy.remove(0);
    EXPECT_EQ(labels(original), (std::vector<std::string>{"0", "1", "2"}));
    EXPECT_EQ(labels(copy), (std::vector<std::string>{"1", "2", "3"}));
    expect_frame(copy);
    expect_frame(original);
}

TYPED_TEST(VectorTest, AssignmentReplacesTheContent) {
    Vector<TypeParam> target = numbered<TypeParam>(5);
    const Vector<TypeParam> source = numbered<TypeParam>(2);
    target = source;
    EXPECT_EQ(labels(target), (std::vector<std::string>{"0", "1"}));
    EXPECT_NE(target.get(0), source.get(0));
    expect_frame(target);
}

TYPED_TEST(VectorTest, CleanupThenCreateGivesAFreshVector) {
    Vector<TypeParam> vector = numbered<TypeParam>(3);
    vector.cleanup();
    vector.cleanup();
    // Without an implementation, removing by position is still allowed and does nothing.
    vector.remove(VectorIterator<TypeParam>());
    vector.create();
    EXPECT_TRUE(vector.empty());
    vector.add(make<TypeParam>(1));
    EXPECT_EQ(labels(vector), (std::vector<std::string>{"1"}));
    vector.create();
    EXPECT_TRUE(vector.empty());
}

TEST(VectorOfValues, NestedElementsAreCopiedDeeply) {
    Vector<Value> outer;
    Value inner;
    inner << Value(1) << Value(2);
    outer.add(inner);
    Vector<Value> copy(outer);
    (*copy.get(0))[0] = 9;
    EXPECT_EQ((*outer.get(0))[0].get_int32(), 1);
    EXPECT_EQ((*copy.get(0))[0].get_int32(), 9);
}

TEST(VectorOfValues, RelocationKeepsNestedTreesIntact) {
    Vector<Value> vector;
    for (int number = 0; number < 64; ++number) {
        Value item;
        item.insert("n", Value(number));
        vector.add(item);
    }
    vector.remove(0, 32);
    for (int number = 0; number < 32; ++number) {
        EXPECT_EQ((*vector.get(number))["n"].get_int32(), number + 32);
    }
}

TEST(VectorRobustness, RandomOperationsBehaveLikeAStandardVector) {
    // Every index-taking and position-taking operation with indexes in and out of range, checked
    // against std::vector after each step; -1 stands for a default element.
    std::mt19937 random(4711);
    Vector<Value> vector;
    std::vector<int> model;
    const auto number_of = [](const Value& item) { return item.isset() ? item.get_int32() : -1; };
    for (int round = 0; round < 3000; ++round) {
        const std::size_t size = model.size();
        const std::size_t index = random() % (size + 3);
        const std::size_t last = random() % (size + 3);
        const int number = static_cast<int>(random() % 1000);
        switch (random() % 9) {
            case 0:
                EXPECT_EQ(number_of(*vector.add(Value(number))), number);
                model.push_back(number);
                break;
            case 1:
                vector.add();
                model.push_back(-1);
                break;
            case 2: {
                const Value* found = vector.add(index);
                if (index >= size) {
                    model.push_back(-1);
                }
                EXPECT_EQ(found, vector.get(std::min(index, size)));
                break;
            }
            case 3: {
                const VectorIterator<Value> at = vector.insert(vector.find(index), Value(number));
                const std::size_t place = std::min(index, size);
                model.insert(model.begin() + static_cast<long>(place), number);
                EXPECT_EQ(at - vector.begin(), static_cast<long>(place));
                break;
            }
            case 4:
                EXPECT_EQ(vector.remove(index),
                          index < size ? Quorvane::HMI_E_SUCCESS : Quorvane::HMI_E_ENTRY_NOT_FOUND);
                if (index < size) {
                    model.erase(model.begin() + static_cast<long>(index));
                }
                break;
            case 5: {
                const bool refused = index > last || size == 0 || index > size;
                EXPECT_EQ(vector.remove(index, last),
                          refused ? Quorvane::HMI_E_ENTRY_NOT_FOUND : Quorvane::HMI_E_SUCCESS);
                if (!refused && index < std::min(last, size)) {
                    model.erase(model.begin() + static_cast<long>(index),
                                model.begin() + static_cast<long>(std::min(last, size)));
                }
                break;
            }
            case 6: {
                const VectorIterator<Value> next = vector.remove(vector.find(index));
                if (index < size) {
                    model.erase(model.begin() + static_cast<long>(index));
                    EXPECT_EQ(next - vector.begin(), static_cast<long>(index));
                } else {
                    EXPECT_TRUE(next == vector.end());
                }
                break;
            }
            case 7:
                EXPECT_EQ(vector.reserve(index * 4), Quorvane::HMI_E_SUCCESS);
                break;
            default:
                if (random() % 20 == 0) {
                    EXPECT_EQ(vector.clear(), Quorvane::HMI_E_SUCCESS);
                    model.clear();
                }
                break;
        }
        ASSERT_EQ(vector.size(), model.size()) << "round " << round;
        std::vector<int> seen;
        for (VectorIterator<Value> at = vector.begin(); at != vector.end(); ++at) {
            seen.push_back(number_of(*at));
        }
        ASSERT_EQ(seen, model) << "round " << round;
    }
}
