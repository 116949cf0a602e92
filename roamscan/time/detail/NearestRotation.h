#pragma once

#include <Eigen/Core>
#include <Eigen/LU>
#include <Eigen/SVD>

#include <limits>

namespace oV::Roamscan::detail
{

/// The nearest rotation to a matrix M by singular value decomposition (orthogonal Procrustes problem, Kabsch
/// algorithm): for M = U S V^T it is U V^T, with the first column of U divided by the determinant of U V^T.
///
/// Eigen's Transform::rotation() cannot be used: in isometry mode it returns the block unchanged, and for a
/// reflection it negates the last column instead of the first.
/// @return all NaN if M is not finite
template <typename T, int Dimension>
[[nodiscard]] Eigen::Matrix<T, Dimension, Dimension>
nearestRotation(Eigen::Matrix<T, Dimension, Dimension> const& block)
{
    using Matrix = Eigen::Matrix<T, Dimension, Dimension>;
    if (!block.allFinite()) {
        // Eigen leaves the result of the decomposition unset in this case.
        return Matrix::Constant(std::numeric_limits<T>::quiet_NaN());
    }
    Eigen::JacobiSVD<Matrix> const svd(block, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Matrix left = svd.matrixU();
    left.col(0) /= Matrix(left * svd.matrixV().transpose()).determinant();
    return left * svd.matrixV().transpose();
}

} // namespace oV::Roamscan::detail
