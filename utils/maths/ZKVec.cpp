#include "ZKVec.h"

#include <climits>

const ZKVec3d ZKVec3d::s_nullVec(0.0, 0.0, 0.0);

namespace {

// The normalising members differ only in their threshold test and in what
// they return; the arithmetic is this one set of helpers.
template <typename V, typename TooShort> auto divideByLengthUnless(V& v, TooShort tooShort) {
    const auto len = v.length();
    if (!tooShort(len))
        v /= len;
    return len;
}

template <typename V, typename TooShort>
auto scaleToLengthUnless(V& v, typename V::value_type target, TooShort tooShort) {
    const auto len = v.length();
    if (!tooShort(len))
        v *= target / len;
    return len;
}

template <typename V, typename TooShort> V unitCopyOrZero(const V& v, TooShort tooShort) {
    const auto len = v.length();
    if (tooShort(len))
        return V();
    return v / len;
}

template <typename V> void oneOrthogonalVec(const V& v, V& out) {
    using T = typename V::value_type;
    const T ax = std::fabs(v.x), ay = std::fabs(v.y), az = std::fabs(v.z);
    V axis;
    if (ax > ay) {
        if (az > ay)
            axis.y = T(1);
        else
            axis.z = T(1);
    } else {
        if (ax > az)
            axis.z = T(1);
        else
            axis.x = T(1);
    }
    out = axis.cross(v);
}

template <typename V> bool orthogonalTo(V& v, const V& unitNormal) {
    v -= unitNormal * v.dot(unitNormal);
    return true;
}

// Truncation toward zero as the processor's truncating conversion does it:
// a value outside the int range, or NaN, gives INT_MIN instead of undefined
// behaviour.
int truncToInt(double value) {
    if (value > -2147483649.0 && value < 2147483648.0)
        return int(value);
    return INT_MIN;
}

short low16(int value) {
    return short(static_cast<unsigned short>(static_cast<unsigned int>(value) & 0xFFFFu));
}

template <typename Src> void setFromFloating(ZKVec2i& out, const Src& v) {
    out.x = truncToInt(double(v.x));
    out.y = truncToInt(double(v.y));
}

template <typename Src> void setFromFloating(ZKVec2s& out, const Src& v) {
    out.x = low16(truncToInt(double(v.x)));
    out.y = low16(truncToInt(double(v.y)));
}

} // namespace

// The thresholds differ from type to type on purpose; they are kept exactly.

float ZKVec2f::normalize() {
    // kept: the float length is widened to double and compared with 1e-26
    return divideByLengthUnless(*this, [](float len) { return !(double(len) > 1e-26); });
}

float ZKVec2f::normalizeWith(float len) {
    // kept: compared with 1e-26 in float
    return scaleToLengthUnless(*this, len, [](float l) { return !(l > 1e-26f); });
}

void ZKVec2d::normalize() {
    // kept: 1e-26 for the 2D types
    divideByLengthUnless(*this, [](double len) { return !(len > 1e-26); });
}

double ZKVec2d::normalizeWith(double len) {
    // kept: 1e-26 for the 2D types
    return scaleToLengthUnless(*this, len, [](double l) { return !(l > 1e-26); });
}

namespace {
// kept: 1e-28 for ZKVec3f, compared in double
bool vec3fTooShort(float len) {
    return -1e-28 < double(len) && double(len) < 1e-28;
}
// kept: 1e-100 for ZKVec3d
bool vec3dTooShort(double len) {
    return -1e-100 < len && len < 1e-100;
}
} // namespace

float ZKVec3f::normalize() {
    return divideByLengthUnless(*this, vec3fTooShort);
}

void ZKVec3f::normalizeWith(float len) {
    scaleToLengthUnless(*this, len, vec3fTooShort);
}

ZKVec3f ZKVec3f::normalize_d() const {
    return unitCopyOrZero(*this, vec3fTooShort);
}

void ZKVec3f::getnormalize_d(ZKVec3f& out) const {
    out = unitCopyOrZero(*this, vec3fTooShort);
}

void ZKVec3f::getOneOrthogonalVec(ZKVec3f& out) const {
    oneOrthogonalVec(*this, out);
}

bool ZKVec3f::makeThisOrthogonalTo(const ZKVec3f& n) {
    return orthogonalTo(*this, n);
}

double ZKVec3d::normalize() {
    return divideByLengthUnless(*this, vec3dTooShort);
}

ZKVec3d ZKVec3d::normalize_d() const {
    return unitCopyOrZero(*this, vec3dTooShort);
}

void ZKVec3d::getnormalize_d(ZKVec3d& out) const {
    out = unitCopyOrZero(*this, vec3dTooShort);
}

void ZKVec3d::getOneOrthogonalVec(ZKVec3d& out) const {
    oneOrthogonalVec(*this, out);
}

bool ZKVec3d::makeThisOrthogonalTo(const ZKVec3d& n) {
    return orthogonalTo(*this, n);
}

void ZKVec4f::normalize() {
    // kept: 1e-28 for ZKVec4f, compared in float
    divideByLengthUnless(*this, [](float len) { return -1e-28f < len && len < 1e-28f; });
}

void ZKVec4d::normalize() {
    // kept: 1e-50 for ZKVec4d
    divideByLengthUnless(*this, [](double len) { return -1e-50 < len && len < 1e-50; });
}

void ZKVec2i::setCoords(const ZKVec2f& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec2d& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec3f& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec3d& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec4f& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec4d& v) {
    setFromFloating(*this, v);
}
void ZKVec2i::setCoords(const ZKVec2s& v) {
    x = v.x;
    y = v.y;
}

void ZKVec2s::setCoords(const ZKVec2f& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec2d& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec3f& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec3d& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec4f& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec4d& v) {
    setFromFloating(*this, v);
}
void ZKVec2s::setCoords(const ZKVec2i& v) {
    // kept: the low 16 bits of each int
    x = low16(v.x);
    y = low16(v.y);
}
