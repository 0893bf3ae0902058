#pragma once

/// @file
/// As much of the standard library as the public headers use, so that Clang can read these for a system
/// whose own library is not here. Nothing of it runs; but what needs a complete type there, needs it here.

using size_t = decltype(sizeof 0);

namespace std {

using ::size_t;
using ptrdiff_t = decltype(static_cast<char*>(nullptr) - static_cast<char*>(nullptr));
using nullptr_t = decltype(nullptr);
using int32_t = int;
using int64_t = long long;
using uint8_t = unsigned char;
using uint32_t = unsigned;
using uint64_t = unsigned long long;

// ---- <type_traits>, <utility>, <iterator>

template <class T, T Value>
struct integral_constant {
    static constexpr T value = Value;
};
using true_type = integral_constant<bool, true>;
using false_type = integral_constant<bool, false>;

template <class...>
using void_t = void;
template <class T>
inline constexpr bool is_void_v = __is_void(T);
template <class T>
inline constexpr bool is_lvalue_reference_v = false;
template <class T>
inline constexpr bool is_lvalue_reference_v<T&> = true;

template <class T>
struct remove_reference {
    using type = T;
};
template <class T>
struct remove_reference<T&> {
    using type = T;
};
template <class T>
struct remove_reference<T&&> {
    using type = T;
};
template <class T>
using remove_reference_t = typename remove_reference<T>::type;
template <class T>
struct remove_cv {
    using type = T;
};
template <class T>
struct remove_cv<T const> {
    using type = T;
};
template <class T>
using decay_t = typename remove_cv<remove_reference_t<T>>::type;

template <class T>
T&& declval() noexcept;

template <class T>
constexpr remove_reference_t<T>&& move(T&& object) noexcept
{
    return static_cast<remove_reference_t<T>&&>(object);
}
template <class T>
constexpr T&& forward(remove_reference_t<T>& object) noexcept
{
    return static_cast<T&&>(object);
}
template <class T, class U = T>
T exchange(T& object, U&& value)
{
    T before = move(object);
    object = forward<U>(value);
    return before;
}
template <class T>
void swap(T& a, T& b)
{
    a = exchange(b, move(a));
}

template <class A, class B>
struct pair {
    A first;
    B second;
};

struct input_iterator_tag {};

// ---- <memory>

template <class T>
class unique_ptr {
public:
    unique_ptr() noexcept = default;
    template <class U>
    unique_ptr(unique_ptr<U>&& other) noexcept
        : m_object(other.release())
    {
    }
    unique_ptr(unique_ptr&& other) noexcept
        : m_object(other.release())
    {
    }
    ~unique_ptr()
    {
        static_assert(sizeof(T) > 0);
        delete m_object;
    }
    unique_ptr& operator=(unique_ptr&& other) noexcept
    {
        swap(m_object, other.m_object);
        return *this;
    }
    T* release() noexcept { return exchange(m_object, nullptr); }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }

private:
    T* m_object = nullptr;
};

template <class T, class... Arguments>
unique_ptr<T> make_unique(Arguments&&...);

/// Ends its object by a function of its own: it may be one of an incomplete type.
template <class T>
class shared_ptr {
public:
    shared_ptr() noexcept;
    shared_ptr(shared_ptr const&) noexcept;
    ~shared_ptr();
    shared_ptr& operator=(shared_ptr const&) noexcept;
};

// ---- <optional>, <functional>, <string>, <vector>, <chrono>

template <class T>
class optional {
    T m_value;
    bool m_isSet = false;
};

template <class Signature>
class function {
public:
    function(nullptr_t) noexcept;
    function(function const&);
    template <class Callable>
    function(Callable)
    {
    }
    ~function();
    function& operator=(function const&);
};

class string {
public:
    string();
    string(string const&);
    ~string();
    string& operator=(string const&);
    char const* c_str() const noexcept;
};

template <class T>
class vector {
public:
    vector();
    vector(vector const&);
    ~vector();
    vector& operator=(vector const&);
};

namespace chrono {
struct steady_clock {
    struct time_point {
        long long ticks = 0;
    };
};
} // namespace chrono

} // namespace std
