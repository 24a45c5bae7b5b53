#ifndef BINDINGS_PYTHON_FAILURES_H
#define BINDINGS_PYTHON_FAILURES_H

#include <exception>

namespace Python {

/// Sets Python's error for an exception of the library; for pybind11, which asks for it.
void translate(std::exception_ptr failure);

} // namespace Python

#endif
