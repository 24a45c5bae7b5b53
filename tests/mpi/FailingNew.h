#ifndef TESTS_MPI_FAILINGNEW_H
#define TESTS_MPI_FAILINGNEW_H

/// Lets the one allocation fail, by `new` in this process, that comes after so many others.
/// \param others a negative number for none
void failAllocationAfter(long others);

#endif
