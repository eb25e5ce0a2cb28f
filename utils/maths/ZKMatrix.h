// ZKMatrix.h: the square matrices ZKMatrix2f, ZKMatrix2d, ZKMatrix3f,
// ZKMatrix3d, ZKMatrix4f and ZKMatrix4d.
//
// Layout: a public flat array m of N×N values stored column by column, so
// element (row r, column c) is m[N*c + r]. Vectors are column vectors and a
// transform applies as p' = M·p; A·B applies B first. A 4×4 affine matrix
// keeps its 3×3 linear part at indices 0-2, 4-6, 8-10, its translation at
// 12, 13, 14, zeros at 3, 7, 11 and 1 at 15. Angles are in radians.
//
// Default construction gives the identity. The matrices are plain values:
// copied freely, no virtual members, no heap storage. The element-wise
// operations, the products and equality come from one template,
// ZKMatrixOps; the 4×4 members delegate to ZKMatrixRoutines. Where the float
// and double 4×4 members deliberately behave differently, the member says so.
//
// Threads: values, no shared state.
#pragma once

#include "ZKExport.h"
#include "ZKVec.h"

// Operations shared by every N×N matrix type M of element type T whose
// column vectors are of type V. M derives from it and holds the array m.
template <typename M, typename T, int N, typename V> class ZKMatrixOps {
public:
    using value_type = T;
    using vector_type = V;
    static constexpr int dimension() { return N; }
    static constexpr int count() { return N * N; }

    // Element i in storage order; i is not checked.
    T& operator[](int i) { return self().m[i]; }
    const T& operator[](int i) const { return self().m[i]; }
    // Element (row, column).
    T& operator()(int row, int col) { return self().m[N * col + row]; }
    const T& operator()(int row, int col) const { return self().m[N * col + row]; }

    T* data() { return self().m; }
    const T* data() const { return self().m; }

    void setIdentity() {
        for (int i = 0; i < N * N; ++i)
            self().m[i] = (i % (N + 1) == 0) ? T(1) : T(0);
    }
    // Copies N×N values in storage order.
    void setValue(const T* values) {
        for (int i = 0; i < N * N; ++i)
            self().m[i] = values[i];
    }

    friend M operator+(const M& a, const M& b) {
        M r;
        for (int i = 0; i < N * N; ++i)
            r.m[i] = a.m[i] + b.m[i];
        return r;
    }
    friend M operator-(const M& a, const M& b) {
        M r;
        for (int i = 0; i < N * N; ++i)
            r.m[i] = a.m[i] - b.m[i];
        return r;
    }
    friend M operator*(const M& a, T s) {
        M r;
        for (int i = 0; i < N * N; ++i)
            r.m[i] = a.m[i] * s;
        return r;
    }
    friend M operator*(T s, const M& a) { return a * s; }

    // The matrix product a·b (b applied first).
    friend M operator*(const M& a, const M& b) {
        M r;
        multiply(r.m, a.m, b.m);
        return r;
    }
    // this := this·b.
    M& operator*=(const M& b) { return self() = self() * b; }

    // The column vector M·v.
    friend V operator*(const M& a, const V& v) {
        V r;
        apply(r.data(), a.m, v.data());
        return r;
    }

    // Exact comparison of every element.
    friend bool operator==(const M& a, const M& b) {
        for (int i = 0; i < N * N; ++i)
            if (!(a.m[i] == b.m[i]))
                return false;
        return true;
    }
    friend bool operator!=(const M& a, const M& b) { return !(a == b); }
    bool equals(const M& other) const { return self() == other; }

    // out = a·b over flat arrays in this layout: out[N*c + r] is the sum over
    // k of a[N*k + r]·b[N*c + k], accumulated from k = 0. out must not alias a
    // or b. A column of out is summed in a local array, all its rows in step,
    // so that the compiler can use vector registers; every element still adds
    // the same products in the same order.
    static void multiply(T* __restrict out, const T* __restrict a, const T* __restrict b) {
        for (int c = 0; c < N; ++c) {
            T column[N];
            for (int r = 0; r < N; ++r)
                column[r] = a[r] * b[N * c];
            for (int k = 1; k < N; ++k)
                for (int r = 0; r < N; ++r)
                    column[r] += a[N * k + r] * b[N * c + k];
            for (int r = 0; r < N; ++r)
                out[N * c + r] = column[r];
        }
    }
    // out = m·v for a column vector of N values; out must not alias v.
    static void apply(T* out, const T* m, const T* v) {
        for (int r = 0; r < N; ++r) {
            T sum = m[r] * v[0];
            for (int k = 1; k < N; ++k)
                sum += m[N * k + r] * v[k];
            out[r] = sum;
        }
    }

protected:
    ZKMatrixOps() = default;

    // True when pass(|a_i − b_i|, eps) holds for every element.
    template <typename Pass> bool allDifferences(const M& other, T eps, Pass pass) const {
        for (int i = 0; i < N * N; ++i) {
            const T d = self().m[i] - other.m[i];
            if (!pass(d < T(0) ? -d : d, eps))
                return false;
        }
        return true;
    }

private:
    M& self() { return static_cast<M&>(*this); }
    const M& self() const { return static_cast<const M&>(*this); }
};

class ZKUTILS_EXPORT ZKMatrix2f : public ZKMatrixOps<ZKMatrix2f, float, 2, ZKVec2f> {
public:
    float m[4] = {1.0f, 0.0f, 0.0f, 1.0f};

    ZKMatrix2f() = default;
    // The four elements in storage order (column 0, then column 1).
    ZKMatrix2f(float m0, float m1, float m2, float m3) : m{m0, m1, m2, m3} {}

    // Inverts in place. det = m0·m3 − m1·m2 (in float) is stored first; when
    // it is exactly 0 the matrix is left unchanged and false is returned.
    bool inverse(double& det);
};

class ZKUTILS_EXPORT ZKMatrix2d : public ZKMatrixOps<ZKMatrix2d, double, 2, ZKVec2d> {
public:
    double m[4] = {1.0, 0.0, 0.0, 1.0};

    ZKMatrix2d() = default;
    // The four elements in storage order (column 0, then column 1).
    ZKMatrix2d(double m0, double m1, double m2, double m3) : m{m0, m1, m2, m3} {}

    // Inverts in place. det = m0·m3 − m1·m2 is stored first; when it is
    // exactly 0 the matrix is left unchanged and false is returned. The
    // results are rounded through single precision (see the definition).
    bool inverse(double& det);
};

class ZKUTILS_EXPORT ZKMatrix3f : public ZKMatrixOps<ZKMatrix3f, float, 3, ZKVec3f> {
public:
    float m[9] = {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f};

    ZKMatrix3f() = default;
    explicit ZKMatrix3f(const float* values) { setValue(values); }

    // True when every |a_i − b_i| <= eps (a difference equal to eps passes).
    bool equalsEps(const ZKMatrix3f& other, float eps) const;

    // The rotation by angle about axis (which need not be unit length); an
    // axis shorter than 1e-8 gives the identity.
    void setRotation(const ZKVec3f& axis, float angle);
    // The rotation that turns from into to; parallel vectors give the
    // identity (same direction) or a half turn (opposite directions).
    void setRotationFromTo(const ZKVec3f& from, const ZKVec3f& to);
};

class ZKUTILS_EXPORT ZKMatrix3d : public ZKMatrixOps<ZKMatrix3d, double, 3, ZKVec3d> {
public:
    double m[9] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};

    ZKMatrix3d() = default;
    explicit ZKMatrix3d(const double* values) { setValue(values); }
    explicit ZKMatrix3d(const ZKMatrix3f& f);

    // True when every |a_i − b_i| <= eps (a difference equal to eps passes).
    bool equalsEps(const ZKMatrix3d& other, double eps) const;
};

// The mixed products A·B: the float operand is widened to double.
ZKUTILS_EXPORT ZKMatrix3d operator*(const ZKMatrix3d& a, const ZKMatrix3f& b);
ZKUTILS_EXPORT ZKMatrix3d operator*(const ZKMatrix3f& a, const ZKMatrix3d& b);

class ZKUTILS_EXPORT ZKMatrix4f : public ZKMatrixOps<ZKMatrix4f, float, 4, ZKVec4f> {
public:
    float m[16] = {1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f,
                   0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f};

    ZKMatrix4f() = default;
    explicit ZKMatrix4f(const float* values) { setValue(values); }

    // True only when every |a_i − b_i| < eps (a difference equal to eps
    // fails, unlike the 3×3 test).
    bool equalsEps(const ZKMatrix4f& other, float eps) const;

    // Inverts in place with the general 4×4 inversion; ok tells whether it
    // succeeded (on failure the matrix is unchanged).
    void inverse(bool& ok);

    // Identity with t at indices 12-14.
    void translation(const ZKVec3f& t);
    // Both build the whole matrix diag(s.x, s.y, s.z, 1).
    void scale(const ZKVec3f& s);
    void setScale(const ZKVec3f& s);
    // A true scale about pivot: diag(s) with translation pivot − s⊙pivot.
    void scale(const ZKVec3f& s, const ZKVec3f& pivot);
    // The same matrix as scale(s, pivot).
    void setScale(const ZKVec3f& s, const ZKVec3f& pivot);

    // Frame-to-world matrix of the frame (X, Y, Z, O): columns X, Y, Z, O.
    void setRotationFromXYZToAxis(const ZKVec3f& X, const ZKVec3f& Y, const ZKVec3f& Z,
                                  const ZKVec3f& O);
    // World-to-frame matrix of an orthonormal frame (X, Y, Z, O).
    void setRotationFromAxisToXYZ(const ZKVec3f& X, const ZKVec3f& Y, const ZKVec3f& Z,
                                  const ZKVec3f& O);
    // FromXYZToAxis(X2, Y2, Z2, O2)·FromAxisToXYZ(X1, Y1, Z1, O1). Note the
    // argument order: the axes of both frames first, then both origins.
    void setRotationFromAxisToAxis(const ZKVec3f& X1, const ZKVec3f& Y1, const ZKVec3f& Z1,
                                   const ZKVec3f& X2, const ZKVec3f& Y2, const ZKVec3f& Z2,
                                   const ZKVec3f& O1, const ZKVec3f& O2);
    // T(target)·R·T(−pivot), R turning from into to. Starts from the
    // identity, so a skipped rotation (parallel, angle <= π/2) leaves it.
    void setRotationFromTo(const ZKVec3f& from, const ZKVec3f& to, const ZKVec3f& pivot,
                           const ZKVec3f& target);
    // Writes only the 3×3 part: rotation by angle about axis.
    void setRotation_sub3x3(const ZKVec3f& axis, float angle);
    // Euler angles of the 3×3 part (see ZKMatrixRoutines_Euler); returns 0
    // on a good fit, −1 otherwise.
    int getEulerAngles(float& e0, float& e1, float& e2) const;
    void setRotation_sub3x3_euler(float e0, float e1, float e2);

    // Transposes the upper-left 3×3 only.
    void transpose3();

    // (3×3 part)·p + translation, and (3×3 part)·d.
    ZKVec3f transformPoint(const ZKVec3f& p) const;
    ZKVec3f transformDir(const ZKVec3f& d) const;
};

class ZKUTILS_EXPORT ZKMatrix4d : public ZKMatrixOps<ZKMatrix4d, double, 4, ZKVec4d> {
public:
    double m[16] = {1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};

    ZKMatrix4d() = default;
    explicit ZKMatrix4d(const double* values) { setValue(values); }
    explicit ZKMatrix4d(const ZKMatrix4f& f);

    // True only when every |a_i − b_i| < eps (a difference equal to eps
    // fails, unlike the 3×3 test).
    bool equalsEps(const ZKMatrix4d& other, double eps) const;

    // Inverts in place with the general 4×4 inversion; ok tells whether it
    // succeeded (on failure the matrix is unchanged).
    void inverse(bool& ok);

    // Identity with t at indices 12-14.
    void translation(const ZKVec3d& t);
    // Builds the whole matrix diag(s.x, s.y, s.z, 1).
    void scale(const ZKVec3d& s);
    void setScale(const ZKVec3d& s);
    // Unlike ZKMatrix4f: diag(s) with translation = pivot (not a scale about
    // the pivot).
    void scale(const ZKVec3d& s, const ZKVec3d& pivot);

    void setRotationFromXYZToAxis(const ZKVec3d& X, const ZKVec3d& Y, const ZKVec3d& Z,
                                  const ZKVec3d& O);
    void setRotationFromAxisToXYZ(const ZKVec3d& X, const ZKVec3d& Y, const ZKVec3d& Z,
                                  const ZKVec3d& O);
    void setRotationFromAxisToAxis(const ZKVec3d& X1, const ZKVec3d& Y1, const ZKVec3d& Z1,
                                   const ZKVec3d& X2, const ZKVec3d& Y2, const ZKVec3d& Z2,
                                   const ZKVec3d& O1, const ZKVec3d& O2);
    // T(target)·R·T(−pivot). Unlike ZKMatrix4f it only clears the
    // translation first, so a skipped rotation (parallel, angle <= π/2)
    // keeps the linear part the matrix held.
    void setRotationFromTo(const ZKVec3d& from, const ZKVec3d& to, const ZKVec3d& pivot,
                           const ZKVec3d& target);
    void setRotation_sub3x3(const ZKVec3d& axis, double angle);
    int getEulerAngles(double& e0, double& e1, double& e2) const;
    void setRotation_sub3x3_euler(double e0, double e1, double e2);

    // Unlike ZKMatrix4f: transposes all 16 elements.
    void transpose3();

    ZKVec3d transformPoint(const ZKVec3d& p) const;
    ZKVec3d transformDir(const ZKVec3d& d) const;
};

inline ZKMatrix3d::ZKMatrix3d(const ZKMatrix3f& f) {
    for (int i = 0; i < 9; ++i)
        m[i] = f.m[i];
}

inline ZKMatrix4d::ZKMatrix4d(const ZKMatrix4f& f) {
    for (int i = 0; i < 16; ++i)
        m[i] = f.m[i];
}
