// ZKVec.h: the small fixed-size vectors of the library's geometry.
//
// ZKVec2f, ZKVec2d, ZKVec2i, ZKVec2s, ZKVec3f, ZKVec3d, ZKVec4f and ZKVec4d
// hold their components x, y, z, w (as many as the size says) contiguously in
// that order and nothing else; f is a 32-bit float, d a 64-bit double, i a
// 32-bit int and s a 16-bit short. They are plain values: copied freely, no
// virtual members, no heap storage. Default construction gives zeros.
//
// The common operations (component access, +, -, scalar * and /, dot, cross,
// length, ==, !=) come from one template, ZKVecOps; what differs between the
// types (the normalisation thresholds, the integer conversions) is declared
// on each type. Equality is exact.
//
// Threads: values; no shared state apart from the constant ZKVec3d::s_nullVec.
#pragma once

#include "ZKExport.h"

#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

// Operations shared by every vector type V of N components of type T. V
// derives from it and holds the fields; the base holds no data.
template <typename V, typename T, int N> class ZKVecOps {
public:
    using value_type = T;
    static constexpr int size() { return N; }

    // Component i in the order x, y, z, w; i is not checked.
    T& operator[](int i) { return self().*member(i); }
    const T& operator[](int i) const { return self().*member(i); }

    T* data() { return &self().x; }
    const T* data() const { return &self().x; }

    friend V operator+(const V& a, const V& b) {
        return zip(
            a, b, [](T p, T q) { return p + q; }, Indices{});
    }
    friend V operator-(const V& a, const V& b) {
        return zip(
            a, b, [](T p, T q) { return p - q; }, Indices{});
    }
    friend V operator-(const V& a) {
        return map(
            a, [](T p) { return -p; }, Indices{});
    }
    friend V operator*(const V& a, T s) {
        return map(
            a, [s](T p) { return p * s; }, Indices{});
    }
    friend V operator*(T s, const V& a) {
        return map(
            a, [s](T p) { return s * p; }, Indices{});
    }
    friend V operator/(const V& a, T s) {
        return map(
            a, [s](T p) { return p / s; }, Indices{});
    }

    V& operator+=(const V& b) { return self() = self() + b; }
    V& operator-=(const V& b) { return self() = self() - b; }
    V& operator*=(T s) { return self() = self() * s; }
    V& operator/=(T s) { return self() = self() / s; }

    // Exact comparison of every component.
    friend bool operator==(const V& a, const V& b) { return equal(a, b, Indices{}); }
    friend bool operator!=(const V& a, const V& b) { return !equal(a, b, Indices{}); }

    // Sum of the component products, accumulated from x onwards in T.
    T dot(const V& b) const { return dotOf(self(), b, Indices{}); }
    T sqrLength() const { return dot(self()); }
    T length() const {
        static_assert(std::is_floating_point<T>::value, "length() needs a floating-point vector");
        return std::sqrt(sqrLength());
    }

    // The cross product this × b (3-component vectors only).
    V cross(const V& b) const {
        static_assert(N == 3, "cross() needs a 3-component vector");
        const V& a = self();
        return V(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }

protected:
    ZKVecOps() = default;

private:
    using Indices = std::make_index_sequence<std::size_t(N)>;

    V& self() { return static_cast<V&>(*this); }
    const V& self() const { return static_cast<const V&>(*this); }

    template <std::size_t I, typename U> static auto& get(U& v) {
        if constexpr (I == 0)
            return v.x;
        else if constexpr (I == 1)
            return v.y;
        else if constexpr (I == 2)
            return v.z;
        else
            return v.w;
    }
    static T V::*member(int i) {
        if constexpr (N == 2) {
            static constexpr T V::*members[] = {&V::x, &V::y};
            return members[i];
        } else if constexpr (N == 3) {
            static constexpr T V::*members[] = {&V::x, &V::y, &V::z};
            return members[i];
        } else {
            static constexpr T V::*members[] = {&V::x, &V::y, &V::z, &V::w};
            return members[i];
        }
    }
    template <typename F, std::size_t... I>
    static V zip(const V& a, const V& b, F f, std::index_sequence<I...>) {
        return V(T(f(get<I>(a), get<I>(b)))...);
    }
    template <typename F, std::size_t... I>
    static V map(const V& a, F f, std::index_sequence<I...>) {
        return V(T(f(get<I>(a)))...);
    }
    template <std::size_t... I>
    static bool equal(const V& a, const V& b, std::index_sequence<I...>) {
        return ((get<I>(a) == get<I>(b)) && ...);
    }
    template <std::size_t... I> static T dotOf(const V& a, const V& b, std::index_sequence<I...>) {
        T sum = T(0);
        ((sum = T(sum + get<I>(a) * get<I>(b))), ...);
        return sum;
    }
};

class ZKVec2d;
class ZKVec2i;
class ZKVec2s;
class ZKVec3f;
class ZKVec3d;
class ZKVec4f;
class ZKVec4d;

class ZKUTILS_EXPORT ZKVec2f : public ZKVecOps<ZKVec2f, float, 2> {
public:
    float x = 0.0f;
    float y = 0.0f;

    constexpr ZKVec2f() = default;
    constexpr ZKVec2f(float x_, float y_) : x(x_), y(y_) {}
    explicit ZKVec2f(const ZKVec2d& v);

    void set(float x_, float y_) { x = x_, y = y_; }

    // Divides by the length when the length, widened to double, is above
    // 1e-26; otherwise leaves the vector as it is. Returns the length.
    float normalize();
    // Scales to length len when the length is above 1e-26f; returns the
    // former length.
    float normalizeWith(float len);
};

class ZKUTILS_EXPORT ZKVec2d : public ZKVecOps<ZKVec2d, double, 2> {
public:
    double x = 0.0;
    double y = 0.0;

    constexpr ZKVec2d() = default;
    constexpr ZKVec2d(double x_, double y_) : x(x_), y(y_) {}
    explicit ZKVec2d(const ZKVec2f& v) : x(v.x), y(v.y) {}

    void set(double x_, double y_) { x = x_, y = y_; }

    // Divides by the length when it is above 1e-26; otherwise unchanged.
    void normalize();
    // Scales to length len when the length is above 1e-26; returns the
    // former length.
    double normalizeWith(double len);
};

// Integer 2D vector (pixel positions). setCoords truncates floating-point
// sources toward zero; a value outside the int range (or NaN) gives
// INT_MIN, as the processor's truncating conversion does.
class ZKUTILS_EXPORT ZKVec2i : public ZKVecOps<ZKVec2i, int, 2> {
public:
    int x = 0;
    int y = 0;

    constexpr ZKVec2i() = default;
    constexpr ZKVec2i(int x_, int y_) : x(x_), y(y_) {}

    void set(int x_, int y_) { x = x_, y = y_; }

    // Take the first two components of the source.
    void setCoords(const ZKVec2f& v);
    void setCoords(const ZKVec2d& v);
    void setCoords(const ZKVec3f& v);
    void setCoords(const ZKVec3d& v);
    void setCoords(const ZKVec4f& v);
    void setCoords(const ZKVec4d& v);
    void setCoords(const ZKVec2s& v);
};

// 16-bit integer 2D vector. setCoords converts floating-point sources as
// ZKVec2i does and then keeps the low 16 bits; from ZKVec2i it keeps the low
// 16 bits of each int.
class ZKUTILS_EXPORT ZKVec2s : public ZKVecOps<ZKVec2s, short, 2> {
public:
    short x = 0;
    short y = 0;

    constexpr ZKVec2s() = default;
    constexpr ZKVec2s(short x_, short y_) : x(x_), y(y_) {}

    void set(short x_, short y_) { x = x_, y = y_; }

    void setCoords(const ZKVec2f& v);
    void setCoords(const ZKVec2d& v);
    void setCoords(const ZKVec3f& v);
    void setCoords(const ZKVec3d& v);
    void setCoords(const ZKVec4f& v);
    void setCoords(const ZKVec4d& v);
    void setCoords(const ZKVec2i& v);
};

class ZKUTILS_EXPORT ZKVec3f : public ZKVecOps<ZKVec3f, float, 3> {
public:
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    constexpr ZKVec3f() = default;
    constexpr ZKVec3f(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    explicit ZKVec3f(const ZKVec3d& v);

    void set(float x_, float y_, float z_) { x = x_, y = y_, z = z_; }

    // Divides by the length unless −1e-28 < length < 1e-28 (compared in
    // double); returns the length.
    float normalize();
    // Scales to length len under the same threshold.
    void normalizeWith(float len);
    // The unit copy, or the zero vector under the threshold.
    ZKVec3f normalize_d() const;
    void getnormalize_d(ZKVec3f& out) const;

    // out = e × this, e the coordinate axis along the component of smallest
    // magnitude (not normalised).
    void getOneOrthogonalVec(ZKVec3f& out) const;
    // this := this − (this·n)·n, n taken as unit length; returns true.
    bool makeThisOrthogonalTo(const ZKVec3f& n);
};

class ZKUTILS_EXPORT ZKVec3d : public ZKVecOps<ZKVec3d, double, 3> {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    // The zero vector.
    static const ZKVec3d s_nullVec;

    constexpr ZKVec3d() = default;
    constexpr ZKVec3d(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}
    explicit ZKVec3d(const ZKVec3f& v) : x(v.x), y(v.y), z(v.z) {}

    void set(double x_, double y_, double z_) { x = x_, y = y_, z = z_; }

    // Divides by the length unless −1e-100 < length < 1e-100; returns the
    // length.
    double normalize();
    // The unit copy, or the zero vector under the threshold.
    ZKVec3d normalize_d() const;
    void getnormalize_d(ZKVec3d& out) const;

    // out = e × this, e the coordinate axis along the component of smallest
    // magnitude (not normalised).
    void getOneOrthogonalVec(ZKVec3d& out) const;
    // this := this − (this·n)·n, n taken as unit length; returns true.
    bool makeThisOrthogonalTo(const ZKVec3d& n);
};

class ZKUTILS_EXPORT ZKVec4f : public ZKVecOps<ZKVec4f, float, 4> {
public:
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 0.0f;

    constexpr ZKVec4f() = default;
    constexpr ZKVec4f(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    explicit ZKVec4f(const ZKVec4d& v);

    void set(float x_, float y_, float z_, float w_) { x = x_, y = y_, z = z_, w = w_; }

    // Divides by the length unless −1e-28f < length < 1e-28f (in float).
    void normalize();
};

class ZKUTILS_EXPORT ZKVec4d : public ZKVecOps<ZKVec4d, double, 4> {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 0.0;

    constexpr ZKVec4d() = default;
    constexpr ZKVec4d(double x_, double y_, double z_, double w_) : x(x_), y(y_), z(z_), w(w_) {}
    explicit ZKVec4d(const ZKVec4f& v) : x(v.x), y(v.y), z(v.z), w(v.w) {}

    void set(double x_, double y_, double z_, double w_) { x = x_, y = y_, z = z_, w = w_; }

    // Divides by the length unless −1e-50 < length < 1e-50.
    void normalize();
};

inline ZKVec2f::ZKVec2f(const ZKVec2d& v) : x(float(v.x)), y(float(v.y)) {}
inline ZKVec3f::ZKVec3f(const ZKVec3d& v) : x(float(v.x)), y(float(v.y)), z(float(v.z)) {}
inline ZKVec4f::ZKVec4f(const ZKVec4d& v)
    : x(float(v.x)), y(float(v.y)), z(float(v.z)), w(float(v.w)) {}
