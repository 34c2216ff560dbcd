// What the project's C++20 uses that emscripten 3.1.6's libc++ (14) does not have yet.
// Force-included into the web build alone; the native build uses the standard library's own.
#pragma once

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <version>

namespace std {

#ifndef __cpp_lib_jthread
// The GPOS kerning's helper threads. The page's engine runs without threads (creating one
// throws std::system_error and the calling thread takes all the work), so a thread that
// joins when destroyed is all that is needed.
class jthread : public thread
{
public:
    using thread::thread;
    jthread(jthread&&) = default;
    jthread& operator=(jthread&&) = default;
    ~jthread()
    {
        if (joinable())
            join();
    }
};
#endif

#if !defined(__cpp_lib_smart_ptr_for_overwrite)
// An array left uninitialised, as the standard's.
template <class T>
requires is_unbounded_array_v<T> unique_ptr<T> make_unique_for_overwrite(size_t size)
{
    return unique_ptr<T>(new remove_extent_t<T>[size]);
}
#endif

#if !defined(__cpp_lib_to_chars)
// Reading --gamma. strtod reads the same numbers in the C locale, which the engine never
// leaves, besides what from_chars refuses: leading blanks, "+" and hexadecimal, which are
// turned away here as from_chars turns them away.
inline from_chars_result from_chars(const char* first, const char* last, double& value)
{
    if (first == last || isspace(static_cast<unsigned char>(*first)) || *first == '+')
        return {first, errc::invalid_argument};
    const string text(first, last);
    const size_t digits = text[0] == '-' ? 1 : 0;
    if (text.size() > digits + 1 && text[digits] == '0' && (text[digits + 1] == 'x' || text[digits + 1] == 'X')) {
        value = digits ? -0.0 : 0.0;
        return {first + digits + 1, errc()};
    }
    char* end = nullptr;
    const double read = strtod(text.c_str(), &end);
    if (end == text.c_str())
        return {first, errc::invalid_argument};
    if (read == HUGE_VAL || read == -HUGE_VAL) {
        if (!isinf(read) || text.find_first_of("iI") == string::npos)
            return {first + (end - text.c_str()), errc::result_out_of_range};
    }
    value = read;
    return {first + (end - text.c_str()), errc()};
}
#endif

} // namespace std
