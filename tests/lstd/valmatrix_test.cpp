// tests/lstd/valmatrix_test.cpp - Matrix, ValMatrix and ValDispersionMatrix.
#include <lstd/valmatrix.h>

#include <expect_throw.h>

#include <vector>

namespace {
char const* const kRowMessage = "ValDispersionMatrix<T>::operator[]";
}  // namespace

TEST(ValDispersionMatrix, EveryCellExistsAndResizeChangesNothing) {
    lstd::ValDispersionMatrix<unsigned long long> m(2, 3);
    for (unsigned long long i = 0; i < 2; ++i)
        for (unsigned long j = 0; j < 3; ++j) {
            EXPECT_EQ(0u, m[i][j]);
            m[i][j] = 10 * i + j;
        }
    static_cast<lstd::ValMatrix<unsigned long long>&>(m).Resize(5, 5);
    EXPECT_EQ((std::vector<unsigned long long>{2, 3, 12, 1, 3}),
              (std::vector<unsigned long long>{m.GetRows(), m.GetColumns(), m[1][2], m[0][1],
                                               m[1].GetNumberOfEntry()}));
    ExpectThrow<lstd::InvalidIndexException>([&] { m[2]; }, kRowMessage);
    ExpectThrow<lstd::InvalidIndexException>([&] { m[1][3]; }, "Invalid position (3)");
}

TEST(ValDispersionMatrix, EmptyDimensionsAndClearLeaveNoRows) {
    lstd::ValDispersionMatrix<int> noRows(0, 4);
    ExpectThrow<lstd::InvalidIndexException>([&] { noRows[0]; }, kRowMessage);
    lstd::ValDispersionMatrix<int> m(3, 0);
    EXPECT_EQ(0u, m[2].GetNumberOfEntry());
    ExpectThrow<lstd::InvalidIndexException>([&] { m[2][0]; }, "Invalid position (0)");
    m.Clear();
    EXPECT_EQ(0u, m.GetRows() + m.GetColumns());
    ExpectThrow<lstd::InvalidIndexException>([&] { m[0]; }, kRowMessage);
}

TEST(ValDispersionMatrix, AssignmentCopiesOnlyTheDimensions) {
    lstd::ValDispersionMatrix<int> big(3, 2);
    big[2][1] = 9;
    lstd::ValDispersionMatrix<int> small(1, 1);
    small[0][0] = 4;
    small = big;
    // The cells stay as built.
    EXPECT_EQ((std::vector<unsigned long>{3, 2, 4, 1}),
              (std::vector<unsigned long>{small.GetRows(), small.GetColumns(),
                                          static_cast<unsigned long>(small[0][0]),
                                          small[0].GetNumberOfEntry()}));
    ExpectThrow<lstd::InvalidIndexException>([&] { small[2]; }, "Invalid position (2)");

    lstd::Matrix<int> dims(5, 6);
    lstd::Matrix<int>& asBase = big;  // the virtual form does the same
    asBase = dims;
    EXPECT_TRUE(big.GetRows() == 5 && big[2][1] == 9);
    dims.Clear();
    EXPECT_EQ(0u, dims.GetRows() + dims.GetColumns());
}
