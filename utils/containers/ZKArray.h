// ZKArray.h: the library's two sequence containers, ZKStaticArray<T> and
// ZKArray<T>.
//
// Both own their elements contiguously and have the layout of the standard
// vector: three pointers, first element, one past the last element, one past
// the end of the storage; three null pointers are an empty array (a zeroed
// array is a valid empty one). ZKStaticArray<T> is the read-only view taken by
// const reference; ZKArray<T> derives from it, adds no data and adds the
// operations that change the element count, so a ZKArray<T> is accepted in
// place wherever a ZKStaticArray<T> is expected.
//
// Copying copies every element (Qt's implicitly shared strings share their
// buffers); destruction destroys the elements and frees the storage.
//
// Growth: when an append or a resize needs more room than the capacity, the
// new capacity is max(2 * capacity, required count); once the capacity has
// reached half of max_size() it becomes max_size(). Shrinking destroys the
// surplus elements from the last one backwards and keeps the storage.
//
// Failures: none are reported but exhaustion. A required count above
// max_size() throws std::length_error; an allocation above it throws
// std::length_error("allocator<T>::allocate(size_t n) 'n' exceeds maximum
// supported size"); the system allocator may throw std::bad_alloc.
//
// No index is checked: operator[], front() and back() on a position that does
// not exist are the caller's fault, not reported.
//
// Threads: not locked; an array must not be changed while another thread
// reads or changes it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

template <typename T> class ZKStaticArray {
public:
    using value_type = T;
    using size_type = long long;
    using iterator = T*;
    using const_iterator = const T*;
    using reference = T&;
    using const_reference = const T&;

    ZKStaticArray() noexcept = default;
    ZKStaticArray(const ZKStaticArray& other) { copyFrom(other.m_first, other.m_last); }
    ZKStaticArray(ZKStaticArray&& other) noexcept { swapStorage(other); }
    ZKStaticArray(std::initializer_list<T> values) { copyFrom(values.begin(), values.end()); }
    ~ZKStaticArray() { release(); }

    ZKStaticArray& operator=(const ZKStaticArray& other) {
        if (this != &other) {
            ZKStaticArray copy(other);
            swapStorage(copy);
        }
        return *this;
    }
    ZKStaticArray& operator=(ZKStaticArray&& other) noexcept {
        if (this != &other) {
            ZKStaticArray taken(std::move(other));
            swapStorage(taken);
        }
        return *this;
    }

    // The largest element count the array can ever hold: the largest count
    // whose byte size the allocator accepts, bounded by the pointer range
    // (2305843009213693951 for 8-byte elements).
    static constexpr size_type max_size() noexcept {
        constexpr std::uint64_t byAllocator = std::numeric_limits<std::size_t>::max() / sizeof(T);
        constexpr std::uint64_t byDistance = std::numeric_limits<std::ptrdiff_t>::max();
        return size_type(std::min(byAllocator, byDistance));
    }

    size_type size() const noexcept { return m_last - m_first; }
    size_type capacity() const noexcept { return m_end - m_first; }
    bool empty() const noexcept { return m_first == m_last; }

    T& operator[](size_type i) noexcept { return m_first[i]; }
    const T& operator[](size_type i) const noexcept { return m_first[i]; }
    T* data() noexcept { return m_first; }
    const T* data() const noexcept { return m_first; }
    T* begin() noexcept { return m_first; }
    T* end() noexcept { return m_last; }
    const T* begin() const noexcept { return m_first; }
    const T* end() const noexcept { return m_last; }
    T& front() noexcept { return *m_first; }
    const T& front() const noexcept { return *m_first; }
    T& back() noexcept { return m_last[-1]; }
    const T& back() const noexcept { return m_last[-1]; }

    friend bool operator==(const ZKStaticArray& a, const ZKStaticArray& b) {
        return a.size() == b.size() && std::equal(a.m_first, a.m_last, b.m_first);
    }
    friend bool operator!=(const ZKStaticArray& a, const ZKStaticArray& b) { return !(a == b); }

protected:
    static T* allocate(size_type n) {
        if (n > max_size())
            throw std::length_error(
                "allocator<T>::allocate(size_t n) 'n' exceeds maximum supported size");
        return n == 0 ? nullptr : std::allocator<T>().allocate(std::size_t(n));
    }
    static void deallocate(T* p, size_type n) noexcept {
        if (p)
            std::allocator<T>().deallocate(p, std::size_t(n));
    }

    // Capacity for a required count, by the growth rule of the header comment.
    size_type recommend(size_type required) const {
        const size_type ms = max_size();
        if (required < 0 || required > ms)
            throw std::length_error("vector");
        const size_type cap = capacity();
        if (cap >= ms / 2)
            return ms;
        return std::max(2 * cap, required);
    }

    // Moves the elements into fresh storage of `newCapacity`; `fill` has already
    // constructed the new elements from index `size()` to `newSize` in it, so
    // a value aliasing an old element is read before the old storage goes.
    template <typename Fill> void reallocate(size_type newCapacity, size_type newSize, Fill fill) {
        T* fresh = allocate(newCapacity);
        const size_type n = size();
        try {
            fill(fresh + n, fresh + newSize);
        } catch (...) {
            deallocate(fresh, newCapacity);
            throw;
        }
        relocate(m_first, m_last, fresh);
        deallocate(m_first, capacity());
        m_first = fresh;
        m_last = fresh + newSize;
        m_end = fresh + newCapacity;
    }

    static void relocate(T* from, T* to, T* dest) noexcept {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (from != to)
                std::memcpy(static_cast<void*>(dest), from, std::size_t(to - from) * sizeof(T));
        } else {
            for (T* p = from; p != to; ++p, ++dest) {
                ::new (static_cast<void*>(dest)) T(std::move(*p));
                p->~T();
            }
        }
    }

    // Destroys [from, m_last) from the last element backwards.
    void destroyTail(T* from) noexcept {
        while (m_last != from) {
            --m_last;
            m_last->~T();
        }
    }

    void release() noexcept {
        destroyTail(m_first);
        deallocate(m_first, capacity());
        m_first = m_last = m_end = nullptr;
    }

    void swapStorage(ZKStaticArray& other) noexcept {
        std::swap(m_first, other.m_first);
        std::swap(m_last, other.m_last);
        std::swap(m_end, other.m_end);
    }

    template <typename It> void copyFrom(It first, It last) {
        const size_type n = size_type(std::distance(first, last));
        m_first = allocate(n);
        m_last = m_first;
        m_end = m_first + n;
        try {
            for (; first != last; ++first, ++m_last)
                ::new (static_cast<void*>(m_last)) T(*first);
        } catch (...) {
            release();
            throw;
        }
    }

    T* m_first = nullptr;
    T* m_last = nullptr;
    T* m_end = nullptr;
};

template <typename T> class ZKArray : public ZKStaticArray<T> {
    using Base = ZKStaticArray<T>;

public:
    using typename Base::size_type;

    ZKArray() noexcept = default;
    ZKArray(const ZKArray& other) = default;
    ZKArray(ZKArray&& other) noexcept = default;
    ZKArray(const Base& other) : Base(other) {}
    ZKArray(Base&& other) noexcept : Base(std::move(other)) {}
    ZKArray(std::initializer_list<T> values) : Base(values) {}
    explicit ZKArray(size_type n) { resize(n); }
    ZKArray(size_type n, const T& value) { resize(n, value); }
    ZKArray& operator=(const ZKArray& other) = default;
    ZKArray& operator=(ZKArray&& other) noexcept = default;

    // New elements are default-constructed: for the string types a valid
    // empty string.
    void resize(size_type n) {
        resizeWith(n, [](T* from, T* to) {
            for (T* p = from; p != to; ++p)
                ::new (static_cast<void*>(p)) T();
        });
    }
    void resize(size_type n, const T& value) {
        resizeWith(n, [&value](T* from, T* to) {
            for (T* p = from; p != to; ++p)
                ::new (static_cast<void*>(p)) T(value);
        });
    }

    // Count becomes 0; the storage is kept.
    void clear() noexcept { this->destroyTail(this->m_first); }

    void push_back(const T& value) { emplace_back(value); }
    void push_back(T&& value) { emplace_back(std::move(value)); }
    template <typename... Args> T& emplace_back(Args&&... args) {
        if (this->m_last != this->m_end) {
            ::new (static_cast<void*>(this->m_last)) T(std::forward<Args>(args)...);
            ++this->m_last;
        } else {
            const size_type n = this->size() + 1;
            this->reallocate(this->recommend(n), n, [&](T* at, T*) {
                ::new (static_cast<void*>(at)) T(std::forward<Args>(args)...);
            });
        }
        return this->back();
    }
    void pop_back() noexcept { this->destroyTail(this->m_last - 1); }

    // Storage for at least n elements, allocated exactly when it grows.
    void reserve(size_type n) {
        if (n > this->capacity()) {
            if (n > Base::max_size())
                throw std::length_error("vector");
            this->reallocate(n, this->size(), [](T*, T*) {});
        }
    }

    // Removes the element at index i; the following ones move down by one.
    void erase(size_type i) {
        T* p = this->m_first + i;
        std::move(p + 1, this->m_last, p);
        pop_back();
    }

private:
    template <typename Fill> void resizeWith(size_type n, Fill fill) {
        const size_type current = this->size();
        if (n <= current) {
            if (n < 0)
                throw std::length_error("vector");
            this->destroyTail(this->m_first + n);
        } else if (n <= this->capacity()) {
            fill(this->m_last, this->m_first + n);
            this->m_last = this->m_first + n;
        } else {
            this->reallocate(this->recommend(n), n, fill);
        }
    }
};
