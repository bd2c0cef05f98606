#pragma once
// Compile-time checks for the operations a class offers, so that tests can pin down what a class
// deliberately lacks (comparisons, ordering, arithmetic, swap) as well as what it has.

#include <type_traits>
#include <utility>

namespace operator_traits {

template <class A, class B, class = void>
struct HasEquality : std::false_type {};
template <class A, class B>
struct HasEquality<A, B,
                   std::void_t<decltype(std::declval<const A&>() == std::declval<const B&>())>>
    : std::true_type {};

template <class T, class = void>
struct HasOrdering : std::false_type {};
template <class T>
struct HasOrdering<T, std::void_t<decltype(std::declval<const T&>() < std::declval<const T&>())>>
    : std::true_type {};

template <class T, class = void>
struct HasSum : std::false_type {};
template <class T>
struct HasSum<T, std::void_t<decltype(std::declval<const T&>() + std::declval<const T&>())>>
    : std::true_type {};

template <class T, class = void>
struct HasSwap : std::false_type {};
template <class T>
struct HasSwap<T, std::void_t<decltype(std::declval<T&>().swap(std::declval<T&>()))>>
    : std::true_type {};

}  // namespace operator_traits
