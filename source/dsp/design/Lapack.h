#pragma once

#include <cstddef>

// The routines of LAPACK that we call, in Fortran's calling convention: everything by address, matrices column by
// column. Each character argument brings its length, hidden at the end of the list.
extern "C"
{
    /** QR factorisation of a general matrix: R in the upper triangle, Householder vectors below. */
    void dgeqrf_ (const int* rows,
                  const int* columns,
                  double* matrix,
                  const int* leadingDimension,
                  double* tau,
                  double* work,
                  const int* workSize,
                  int* info);

    /** Forms the first columns of Q from what `dgeqrf_` left. */
    void dorgqr_ (const int* rows,
                  const int* columns,
                  const int* reflectorCount,
                  double* matrix,
                  const int* leadingDimension,
                  const double* tau,
                  double* work,
                  const int* workSize,
                  int* info);

    /** Solves triangular systems; `info` above 0 tells that the matrix is singular. */
    void dtrtrs_ (const char* triangle,
                  const char* transposition,
                  const char* diagonal,
                  const int* order,
                  const int* rightSideCount,
                  const double* matrix,
                  const int* leadingDimension,
                  double* rightSides,
                  const int* rightLeadingDimension,
                  int* info,
                  std::size_t triangleLength,
                  std::size_t transpositionLength,
                  std::size_t diagonalLength);

    /** Least-squares solution of a full-rank system by QR, overwriting the right-hand sides. */
    void dgels_ (const char* transposition,
                 const int* rows,
                 const int* columns,
                 const int* rightSideCount,
                 double* matrix,
                 const int* leadingDimension,
                 double* rightSides,
                 const int* rightLeadingDimension,
                 double* work,
                 const int* workSize,
                 int* info,
                 std::size_t transpositionLength);
}
