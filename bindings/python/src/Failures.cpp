#include "Failures.h"

#include <Zyl2/Exception/Exception.h>

#include <pybind11/pybind11.h>

#include <new>
#include <stdexcept>
#include <utility>

namespace Python {

namespace py = pybind11;

namespace {

/// Sets Python's error: which class stands for a kind is known where these are defined.
void setError(int code, char const* text, char const* detail)
{
    py::object const failure = py::module_::import("moxwriter.writer")
                                   .attr("failure")(code, py::bytes(text), py::bytes(detail));
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(failure.ptr())), failure.ptr());
}

void setErrorOfMemory()
{
    Zyl2::Exception::MemoryAllocationException const lack;
    setError(lack.errorCode(), lack.what(), "");
}

} // namespace

void translate(std::exception_ptr failure)
{
    try {
        std::rethrow_exception(std::move(failure));
    } catch (Zyl2::Exception::Exception const& known) {
        setError(known.errorCode(), known.what(), Zyl2::Exception::detail(known));
    } catch (std::out_of_range const& outside) {
        setError(Zyl2::Exception::OutOfBounds().errorCode(), outside.what(), "");
    } catch (std::bad_alloc const&) {
        setErrorOfMemory();
    } catch (std::length_error const&) {
        setErrorOfMemory();
    }
}

} // namespace Python
