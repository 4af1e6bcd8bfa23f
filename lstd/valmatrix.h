// lstd/valmatrix.h - two-dimensional value containers: dimensions, interface, dispersed storage.
#ifndef LSTD_VALMATRIX_H
#define LSTD_VALMATRIX_H

#include <lstd/exception.h>
#include <lstd/valdlinklist.h>

#include <utility>

namespace lstd {

/// The dimensions of a matrix of T.
template <typename T>
class Matrix {
public:
    /// A 0 x 0 matrix.
    Matrix() : mRows(0), mColumns(0) {}
    /// The two dimensions; no storage.
    Matrix(unsigned long long const& rows, unsigned long long const& columns)
        : mRows(rows), mColumns(columns) {}
    /// Copies the dimensions.
    Matrix(Matrix const& other) : mRows(other.mRows), mColumns(other.mColumns) {}
    virtual ~Matrix() {}

    /// Sets both dimensions to 0.
    virtual void Clear() {
        mRows = 0;
        mColumns = 0;
    }
    /// Copies the two dimensions and nothing else, whatever kinds of matrix are involved.
    virtual Matrix& operator=(Matrix const& other) {
        mRows = other.mRows;
        mColumns = other.mColumns;
        return *this;
    }

    /// The number of rows.
    unsigned long long const& GetRows() const { return mRows; }
    /// The number of columns.
    unsigned long long const& GetColumns() const { return mColumns; }

protected:
    /// The number of rows.
    unsigned long long mRows;
    /// The number of columns.
    unsigned long long mColumns;
};

/// A matrix holding copies of T.
template <typename T>
class ValMatrix : public Matrix<T> {
public:
    ValMatrix() {}
    /// rows x columns default-constructed values.
    ValMatrix(unsigned long long const& rows, unsigned long long const& columns)
        : Matrix<T>(rows, columns) {}
    virtual ~ValMatrix() {}

    using Matrix<T>::operator=;

    /// Changes the dimensions, as far as the concrete kind of matrix allows.
    virtual void Resize(unsigned long long const& rows, unsigned long long const& columns) = 0;
};

/// A dense matrix (every cell exists) whose storage is dispersed over linked lists: a list
/// of rows, each a list of columns values, so no contiguous block is ever needed. m[i][j]
/// walks i row nodes and j cell nodes (from the nearer ends). Not copy-constructible.
template <typename T>
class ValDispersionMatrix : public ValMatrix<T> {
public:
    /// rows lists of columns cells each; a cell starts as T() (callers write before reading).
    /// Either dimension may be 0. Throws NotEnoughMemoryException when a node cannot be had.
    ValDispersionMatrix(unsigned long long const& rows, unsigned long long const& columns)
        : ValMatrix<T>(rows, columns) {
        for (unsigned long long i = 0; i < rows; ++i) {
            mRowList.Append(ValDLinkList<T>());
            ValDLinkList<T>& row = mRowList[static_cast<unsigned long>(i)];
            for (unsigned long long j = 0; j < columns; ++j)
                row.Append(T());
        }
    }
    ValDispersionMatrix(ValDispersionMatrix const&) = delete;
    /// Takes other's rows without copying a cell; other is left a 0 x 0 matrix. There is no
    /// move assignment on purpose: assigning a temporary keeps copying the dimensions only.
    ValDispersionMatrix(ValDispersionMatrix&& other) noexcept
        : ValMatrix<T>(other), mRowList(std::move(other.mRowList)) {
        other.Matrix<T>::Clear();
    }
    /// Clears, then the row list goes.
    virtual ~ValDispersionMatrix() { Clear(); }

    using Matrix<T>::operator=;
    /// Copies the two dimensions only (see Matrix::operator=); the cells stay as they are.
    ValDispersionMatrix& operator=(ValDispersionMatrix const& other) {
        Matrix<T>::operator=(other);
        return *this;
    }

    /// Sets both dimensions to 0 and deletes every row.
    void Clear() override {
        Matrix<T>::Clear();
        mRowList.Clear();
    }
    /// Does nothing, deliberately: a dispersion matrix keeps the size it was built with, and
    /// callers size their work tables once at construction.
    void Resize(unsigned long long const&, unsigned long long const&) override {}

    /// The list of the row's cells; take a cell with its operator[] ("Invalid position (%d)"
    /// when beyond the row). Throws InvalidIndexException when row >= the number of rows.
    ValDLinkList<T>& operator[](unsigned long long const& row) const {
        if (row >= this->mRows)
            LSTD_THROW(InvalidIndexException, "ValDispersionMatrix<T>::operator[]");
        return mRowList[static_cast<unsigned long>(row)];
    }

private:
    ValDLinkList<ValDLinkList<T>> mRowList;
};
}  // namespace lstd
#endif  // LSTD_VALMATRIX_H
