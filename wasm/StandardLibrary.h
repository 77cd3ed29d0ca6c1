// SPDX-License-Identifier: MIT
/// What this project uses of the C and C++ libraries and emscripten's do not have yet; the toolchain includes
/// it in front of every source. Each part stands aside where the library brings its own.
#pragma once

#if __cplusplus >= 202002L

#include <algorithm>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>
#include <type_traits>

// Names that the standard has: the sources are written against it.
// NOLINTBEGIN(cert-dcl58-cpp)
namespace std {

#ifndef __cpp_lib_bit_cast
template <class To, class From>
requires(sizeof(To) == sizeof(From) && is_trivially_copyable_v<To> && is_trivially_copyable_v<From>)
    [[gnu::always_inline]] constexpr To bit_cast(const From& from) noexcept {
    return __builtin_bit_cast(To, from);
}
#endif

#if _LIBCPP_VERSION < 15000
namespace ranges {

template <class Projection>
auto MemberOf(Projection& projection) {
    return [&](auto&& element) -> decltype(auto) { return std::invoke(projection, element); };
}

template <class Range, class Out>
constexpr void copy(Range&& range, Out out) {
    std::copy(std::begin(range), std::end(range), out);
}
template <class Range, class Out, class Test>
void copy_if(Range&& range, Out out, Test test) {
    std::copy_if(std::begin(range), std::end(range), out, test);
}
template <class Range, class Value>
void fill(Range&& range, const Value& value) {
    std::fill(std::begin(range), std::end(range), value);
}
template <class Range, class Make>
void generate(Range&& range, Make make) {
    std::generate(std::begin(range), std::end(range), make);
}
template <class Range, class Test>
bool any_of(Range&& range, Test test) {
    return std::any_of(std::begin(range), std::end(range), test);
}
template <class Range, class Value>
auto count(Range&& range, const Value& value) {
    return std::count(std::begin(range), std::end(range), value);
}
template <class Range, class Test>
auto find_if(Range&& range, Test test) {
    return std::find_if(std::begin(range), std::end(range), test);
}
template <class Range, class Value, class Projection>
auto find(Range&& range, const Value& value, Projection projection) {
    return ranges::find_if(range, [&](auto&& element) { return std::invoke(projection, element) == value; });
}
template <class Range, class Value>
auto lower_bound(Range&& range, const Value& value) {
    return std::lower_bound(std::begin(range), std::end(range), value);
}
template <class Range, class Projection>
auto min_element(Range&& range, std::less<>, Projection projection) {
    const auto of = MemberOf(projection);
    return std::min_element(std::begin(range), std::end(range),
                            [&](auto& a, auto& b) { return of(a) < of(b); });
}
template <class Range, class Projection>
bool is_sorted(Range&& range, std::less<>, Projection projection) {
    const auto of = MemberOf(projection);
    return std::is_sorted(std::begin(range), std::end(range),
                          [&](auto& a, auto& b) { return of(a) < of(b); });
}
template <class Range, class Projection>
void stable_sort(Range&& range, std::less<>, Projection projection) {
    const auto of = MemberOf(projection);
    std::stable_sort(std::begin(range), std::end(range), [&](auto& a, auto& b) { return of(a) < of(b); });
}

}  // namespace ranges
#endif

#ifndef __cpp_lib_to_chars
// The C library's conversions are exact and know no other decimal sign than the point.
inline from_chars_result from_chars(const char* first, const char* last, double& value) {
    // What strtod takes and from_chars does not: blanks, a plus sign, hexadecimal digits.
    const string text(first, last);
    const size_t digits = text.starts_with('-') ? 1 : 0;
    const char c = digits < text.size() ? text[digits] : ' ';
    const bool begins = (c >= '0' && c <= '9') || c == '.' || c == 'i' || c == 'I' || c == 'n' || c == 'N';
    if (!begins) return {first, errc::invalid_argument};
    const string decimal = text.substr(0, text.find_first_of("xX"));
    char* end = nullptr;
    errno = 0;
    const double found = strtod(decimal.c_str(), &end);
    const auto length = end - decimal.c_str();
    if (length == 0) return {first, errc::invalid_argument};
    if (errno == ERANGE) return {first + length, errc::result_out_of_range};
    value = found;
    return {first + length, errc{}};
}

inline to_chars_result Printed(char* first, char* last, const char* format, int precision, double value) {
    const int length = snprintf(first, static_cast<size_t>(last - first), format, precision, value);
    return length >= last - first ? to_chars_result{last, errc::value_too_large}
                                  : to_chars_result{first + length, errc{}};
}

/// The fewest digits that give the number again.
inline to_chars_result to_chars(char* first, char* last, double value) {
    for (int digits = 1;; ++digits) {
        const to_chars_result printed = Printed(first, last, "%.*g", digits, value);
        if (printed.ec != errc{} || digits == 17 || strtod(first, nullptr) == value) return printed;
    }
}
inline to_chars_result to_chars(char* first, char* last, double value, chars_format, int precision) {
    return Printed(first, last, "%.*f", precision, value);
}
#endif

}  // namespace std
// NOLINTEND(cert-dcl58-cpp)

#ifndef RENAME_EXCHANGE
#define RENAME_EXCHANGE 2
/// Exchanges two files, which this system cannot.
inline int renameat2(int, const char*, int, const char*, int) {
    errno = ENOSYS;
    return -1;
}
#endif

#endif
