#pragma once

#include <Eigen/Core>
#include <Eigen/LU>
#include <Eigen/SVD>

#include <limits>

namespace oV::Roamscan::detail
{

/// The rotation nearest to a linear block M = U S V^T, by its singular vectors: U V^T, with the first column
/// of U divided by the determinant of that product.
///
/// Eigen's own Transform::rotation() does not serve: in the isometry mode it hands the block back as it is,
/// and for a mirroring block it turns the last column round instead of the first.
template <typename T, int Dimension>
[[nodiscard]] Eigen::Matrix<T, Dimension, Dimension>
nearestRotation(Eigen::Matrix<T, Dimension, Dimension> const& block)
{
    using Matrix = Eigen::Matrix<T, Dimension, Dimension>;
    if (!block.allFinite()) {
        // The decomposition leaves its result unset here.
        return Matrix::Constant(std::numeric_limits<T>::quiet_NaN());
    }
    Eigen::JacobiSVD<Matrix> const svd(block, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Matrix left = svd.matrixU();
    left.col(0) /= Matrix(left * svd.matrixV().transpose()).determinant();
    return left * svd.matrixV().transpose();
}

} // namespace oV::Roamscan::detail
