// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <type_traits>

/// What rewrite.py writes into the copy of the sources: every place that can be broken asks by its number whether it is
/// the one that is broken in this process. Included before everything else in each file of the copy.
namespace mutation {

extern int active;              ///< the one that is broken; -1: none
extern unsigned char* covered;  ///< by number: asked since the last test ended; null: nobody wants to know
inline constexpr std::string_view kOtherText = "#mutant#";

/// For what may also be worked out while compiling, where nothing is ever broken.
struct InConstexpr {
    static constexpr bool on(int id) {
        if (std::is_constant_evaluated()) return false;
        if (covered != nullptr) covered[id] = 1;
        return id == active;
    }
};

struct AtRunTime {
    static bool on(int id) {
        if (covered != nullptr) covered[id] = 1;
        return id == active;
    }
};

template <class Where>
struct Broken {
    static constexpr bool on(int id) { return Where::on(id); }

    // A condition turned round. Three of them around an "and" make an "or" of it, and the other way.
    template <class T>
    static constexpr bool turned(int id, const T& value) {
        return Where::on(id) != static_cast<bool>(value);
    }

#define MUTATION_COMPARISON(name, kept, first, second)                     \
    template <class A, class B>                                            \
    static constexpr bool name(int one, int two, const A& a, const B& b) { \
        if (Where::on(one)) return static_cast<bool>(a first b);           \
        if (Where::on(two)) return static_cast<bool>(a second b);          \
        return static_cast<bool>(a kept b);                                \
    }
    MUTATION_COMPARISON(less, <, <=, >=)
    MUTATION_COMPARISON(lessEqual, <=, <, >)
    MUTATION_COMPARISON(greater, >, >=, <=)
    MUTATION_COMPARISON(greaterEqual, >=, >, <)
#undef MUTATION_COMPARISON

#define MUTATION_OPERATOR(name, kept, other)                                \
    template <class A, class B>                                             \
    static constexpr auto name(int id, const A& a, const B& b) {            \
        using Result = std::remove_cvref_t<decltype(a kept b)>;             \
        return Where::on(id) ? static_cast<Result>(a other b) : (a kept b); \
    }
    MUTATION_OPERATOR(equal, ==, !=)
    MUTATION_OPERATOR(notEqual, !=, ==)
    MUTATION_OPERATOR(plus, +, -)
    MUTATION_OPERATOR(minus, -, +)
    MUTATION_OPERATOR(times, *, +)
    MUTATION_OPERATOR(divide, /, *)
    MUTATION_OPERATOR(modulo, %, *)
    MUTATION_OPERATOR(bitAnd, &, |)
    MUTATION_OPERATOR(bitOr, |, &)
    MUTATION_OPERATOR(bitXor, ^, &)
    MUTATION_OPERATOR(shiftLeft, <<, >>)
    MUTATION_OPERATOR(shiftRight, >>, <<)
#undef MUTATION_OPERATOR

#define MUTATION_ASSIGNMENT(name, kept, other)           \
    template <class A, class B>                          \
    static constexpr A& name(int id, A& a, const B& b) { \
        if (Where::on(id)) {                             \
            a other b;                                   \
        } else {                                         \
            a kept b;                                    \
        }                                                \
        return a;                                        \
    }
    MUTATION_ASSIGNMENT(plusAssign, +=, -=)
    MUTATION_ASSIGNMENT(minusAssign, -=, +=)
    MUTATION_ASSIGNMENT(timesAssign, *=, /=)
    MUTATION_ASSIGNMENT(divideAssign, /=, *=)
    MUTATION_ASSIGNMENT(orAssign, |=, &=)
    MUTATION_ASSIGNMENT(andAssign, &=, |=)
#undef MUTATION_ASSIGNMENT

    template <class T>
    static constexpr T& up(int id, T& value) {
        return Where::on(id) ? --value : ++value;
    }
    template <class T>
    static constexpr T& down(int id, T& value) {
        return Where::on(id) ? ++value : --value;
    }

    /// A constant: a number or a name's value becomes the next one, a text another one, true false.
    template <class T>
    static constexpr T constant(int id, T value) {
        if (!Where::on(id)) return value;
        if constexpr (std::is_same_v<T, bool>) {
            return !value;
        } else if constexpr (std::is_enum_v<T>) {
            return static_cast<T>(static_cast<int>(value) + 1);
        } else if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<T>(value + 1);
        } else if constexpr (std::is_same_v<T, std::string_view>) {
            return kOtherText;
        } else if constexpr (std::is_same_v<T, const wchar_t*>) {
            return L"#mutant#";
        } else if constexpr (std::is_pointer_v<T> && !std::is_same_v<T, const char*>) {
            return nullptr;  // a handle that the system gives a number
        } else {
            static_assert(std::is_same_v<T, const char*>);
            return kOtherText.data();
        }
    }
};

}  // namespace mutation

using MutC = mutation::Broken<mutation::InConstexpr>;
using MutR = mutation::Broken<mutation::AtRunTime>;
