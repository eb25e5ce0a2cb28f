// ZKQuaternion.h: the rotation quaternion values ZKQuaternion (float) and
// ZKQuaternionD (double).
//
// Four public components in the order w, x, y, z (scalar part first), no
// other members; default construction gives the identity (1, 0, 0, 0).
// Both are thin wrappers over ZKQuaternionRoutines and behave identically in
// their precision; ZKQuaternion works with ZKMatrix4f and ZKVec3f,
// ZKQuaternionD with ZKMatrix4d and ZKVec3d. Angles are in radians.
//
// Note: operator*= and operator/= compute from their argument alone (see
// below); multRightBy and div are the in-place products.
//
// Threads: values, no shared state.
#pragma once

#include "ZKExport.h"
#include "ZKMatrix.h"
#include "ZKQuaternionRoutines.h"
#include "ZKVec.h"

#include <cmath>

// Operations shared by ZKQuaternion and ZKQuaternionD. Q derives from it and
// holds the fields w, x, y, z.
template <typename Q, typename T, typename V3, typename M4> class ZKQuaternionOps {
public:
    using value_type = T;

    // The unit quaternion of the rotation part of m.
    void setFromMatrix(const M4& m) {
        T q[4];
        ZKQuaternionRoutines::RotMatrixToQuaternion(q, m.m);
        assign(q);
    }
    // The rotation by angle about axis (any length; shorter than 1e-7 gives
    // the identity).
    void setFromAxisAngle(const V3& axis, T angle) {
        T q[4];
        ZKQuaternionRoutines::axisToQuaternionU(q, axis.data(), angle);
        assign(q);
    }
    // From the Euler angles (a, b, c) (see ZKMatrixRoutines_Euler).
    void setFromEuler(T a, T b, T c) {
        const T e[3] = {a, b, c};
        T q[4];
        ZKQuaternionRoutines::eulerToQuaternion(q, e);
        assign(q);
    }

    // The 4×4 rotation matrix of this quaternion (not normalised first).
    void getMatrix(M4& out) const {
        const Array q = array();
        ZKQuaternionRoutines::quaternionToMatrix(out.m, q.v);
    }
    // The unit rotation axis and the angle; no vector part gives a zero axis
    // and angle 0.
    void getAxisAngle(V3& axis, T& angle) const {
        const Array q = array();
        T a[3];
        ZKQuaternionRoutines::quaternionToAxis(a, angle, q.v);
        axis = V3(a[0], a[1], a[2]);
    }

    // this := q ⊗ this, this := this ⊗ q and this := this ⊗ conj(q).
    void multLeftBy(const Q& q) { self() = q * self(); }
    void multRightBy(const Q& q) { self() = self() * q; }
    void div(const Q& q) { self() = self() / q; }

    // Divides the four components by the length; no test for zero length.
    void normalize() {
        Q& s = self();
        const T len = std::sqrt(s.w * s.w + s.x * s.x + s.y * s.y + s.z * s.z);
        s.w /= len;
        s.x /= len;
        s.y /= len;
        s.z /= len;
    }

    // The Hamilton product this ⊗ q.
    friend Q operator*(const Q& a, const Q& b) {
        return combine(a, b, [](T* out, const T* p, const T* q) {
            ZKQuaternionRoutines::multQuaternions(out, p, q);
        });
    }
    // this ⊗ conj(q).
    friend Q operator/(const Q& a, const Q& b) {
        return combine(a, b, [](T* out, const T* p, const T* q) {
            ZKQuaternionRoutines::divQuaternionsU(out, p, q);
        });
    }
    friend Q operator+(const Q& a, const Q& b) {
        return combine(a, b, [](T* out, const T* p, const T* q) {
            ZKQuaternionRoutines::addQuaternions(out, p, q);
        });
    }
    friend Q operator-(const Q& a, const Q& b) {
        return combine(a, b, [](T* out, const T* p, const T* q) {
            ZKQuaternionRoutines::subQuaternions(out, p, q);
        });
    }

    // kept: computes from the argument alone, this := q ⊗ q; the former
    // value of this is not used (multRightBy is the in-place product)
    Q& operator*=(const Q& q) { return self() = q * q; }
    // kept: computes from the argument alone, this := q ⊗ conj(q)
    Q& operator/=(const Q& q) { return self() = q / q; }

protected:
    ZKQuaternionOps() = default;

private:
    struct Array {
        T v[4];
    };

    Q& self() { return static_cast<Q&>(*this); }
    const Q& self() const { return static_cast<const Q&>(*this); }
    Array array() const {
        const Q& s = self();
        return Array{{s.w, s.x, s.y, s.z}};
    }
    void assign(const T* q) {
        Q& s = self();
        s.w = q[0];
        s.x = q[1];
        s.y = q[2];
        s.z = q[3];
    }
    template <typename F> static Q combine(const Q& a, const Q& b, F f) {
        const Array p = a.array(), q = b.array();
        T r[4];
        f(r, p.v, q.v);
        return Q(r[0], r[1], r[2], r[3]);
    }
};

class ZKUTILS_EXPORT ZKQuaternion
    : public ZKQuaternionOps<ZKQuaternion, float, ZKVec3f, ZKMatrix4f> {
public:
    float w = 1.0f;
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    ZKQuaternion() = default;
    ZKQuaternion(float w_, float x_, float y_, float z_) : w(w_), x(x_), y(y_), z(z_) {}
    explicit ZKQuaternion(const ZKMatrix4f& m) { setFromMatrix(m); }
    ZKQuaternion(const ZKVec3f& axis, float angle) { setFromAxisAngle(axis, angle); }
    ZKQuaternion(float a, float b, float c) { setFromEuler(a, b, c); }
    // The rotation turning from into to. Opposite vectors give the identity.
    ZKQuaternion(const ZKVec3f& from, const ZKVec3f& to);
};

class ZKUTILS_EXPORT ZKQuaternionD
    : public ZKQuaternionOps<ZKQuaternionD, double, ZKVec3d, ZKMatrix4d> {
public:
    double w = 1.0;
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    ZKQuaternionD() = default;
    ZKQuaternionD(double w_, double x_, double y_, double z_) : w(w_), x(x_), y(y_), z(z_) {}
    explicit ZKQuaternionD(const ZKMatrix4d& m) { setFromMatrix(m); }
    ZKQuaternionD(const ZKVec3d& axis, double angle) { setFromAxisAngle(axis, angle); }
    ZKQuaternionD(double a, double b, double c) { setFromEuler(a, b, c); }
    // The rotation turning from into to. Opposite vectors give the identity.
    ZKQuaternionD(const ZKVec3d& from, const ZKVec3d& to);
};
