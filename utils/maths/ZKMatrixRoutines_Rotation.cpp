#include "ZKMatrixRoutines_Rotation.h"

#include "ZKQuaternionRoutines.h"
#include "internal/ZKRotationKernels.h"

namespace {

constexpr double kMinAxisLength = 1e-7;

template <typename T> void axisAngleMatrix(T* out, const T* axis, T angle) {
    double q[4];
    ZKRotationKernels::axisAngleToUnitQuat(q, axis, double(angle), kMinAxisLength);
    ZKRotationKernels::quatToRotation<4>(out, q[0], q[1], q[2], q[3]);
}

template <typename T> int axisOfMatrix(T* axis, T& angle, const T* m) {
    // The quaternion just computed from the matrix is the one handed over.
    T q[4];
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, m);
    ZKQuaternionRoutines::quaternionToAxis(axis, angle, q);
    return 0;
}

} // namespace

void ZKMatrixRoutines_Rotation::axisAngleToMatrix(float* out, const float* axis, float angle) {
    axisAngleMatrix(out, axis, angle);
}
void ZKMatrixRoutines_Rotation::axisAngleToMatrix(double* out, const double* axis, double angle) {
    axisAngleMatrix(out, axis, angle);
}
int ZKMatrixRoutines_Rotation::matrixToAxis(float* axis, float& angle, const float* m) {
    return axisOfMatrix(axis, angle, m);
}
int ZKMatrixRoutines_Rotation::matrixToAxis(double* axis, double& angle, const double* m) {
    return axisOfMatrix(axis, angle, m);
}

void __axisToUnitQuat(double* q, const double* axis, double angle) {
    ZKRotationKernels::axisAngleToUnitQuat(q, axis, angle, kMinAxisLength);
}
void __axisToUnitQuat(double* q, const float* axis, double angle) {
    ZKRotationKernels::axisAngleToUnitQuat(q, axis, angle, kMinAxisLength);
}
void __quaternionToMatrix_sub3x3(double* m, const double* q) {
    ZKRotationKernels::quatToRotation<4>(m, q[0], q[1], q[2], q[3]);
}
void __quaternionToMatrix_sub3x3(float* m, const double* q) {
    ZKRotationKernels::quatToRotation<4>(m, q[0], q[1], q[2], q[3]);
}
