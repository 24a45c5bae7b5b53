#include "BufferView.h"

#include "model/Refusal.h"

#include <cstring>
#include <string>

namespace Python {

namespace {

using Element = Zyl2::Mox2::ArrayView::Element;

std::string const whatIsWritten =
    "float32, float64, int32, uint32, int64 and uint64 can be written";

/// The text of an object, which is released.
std::string textOf(PyObject* object)
{
    PyObject* const text = object == nullptr ? nullptr : PyObject_Str(object);
    Py_XDECREF(object);
    char const* const bytes = text == nullptr ? nullptr : PyUnicode_AsUTF8(text);
    std::string result = bytes == nullptr ? "?" : bytes;
    Py_XDECREF(text);
    PyErr_Clear();
    return result;
}

/// The message of Python's current error, which is cleared.
std::string currentMessage()
{
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    Py_XDECREF(type);
    Py_XDECREF(trace);
    return textOf(value);
}

/// What the elements are called: by NumPy where it knows them, otherwise by the buffer's format.
std::string elementName(PyObject* values, char const* format)
{
    PyObject* const type = PyObject_GetAttrString(values, "dtype");
    if (type != nullptr)
        return textOf(type);
    PyErr_Clear();
    return "of the format '" + std::string(format == nullptr ? "B" : format) + "'";
}

[[noreturn]] void refuseValues(std::string const& detail)
{
    Bindings::refuse<Zyl2::Exception::InvalidArguments>(detail);
}

[[noreturn]] void refuseElements(PyObject* values, char const* format)
{
    refuseValues("the array's elements are " + elementName(values, format) + "; " + whatIsWritten);
}

[[noreturn]] void refuseObject(PyObject* values)
{
    std::string const message = currentMessage();
    if (PyObject_CheckBuffer(values) == 0)
        refuseValues("the values are of the type " + std::string(Py_TYPE(values)->tp_name) +
                     ", which is no array: numpy.asarray makes one of what can be one");
    // NumPy does not export elements that it has no format for, such as dates.
    if (PyObject_HasAttrString(values, "dtype") != 0)
        refuseElements(values, nullptr);
    refuseValues("the values can't be looked at: " + message);
}

/// The one character of a format that describes a single element in the machine's byte order;
/// 0 for any other format.
char elementCode(char const* format)
{
    if (format == nullptr)
        return 0;
    // The signs for native, standard, little-endian and unaligned: sizes are told apart by
    // itemsize.
    if (std::strchr("@=<^", *format) != nullptr && *format != '\0')
        ++format;
    return std::strlen(format) == 1 ? *format : '\0';
}

bool isOneOf(char code, char const* codes)
{
    return code != '\0' && std::strchr(codes, code) != nullptr;
}

Element elementOf(Py_buffer const& buffer, PyObject* values)
{
    char const code = elementCode(buffer.format);
    bool const isWide = buffer.itemsize == 8;
    if (isWide || buffer.itemsize == 4) {
        if (isOneOf(code, "fd"))
            return isWide ? Element::Float64 : Element::Float32;
        if (isOneOf(code, "ilqn"))
            return isWide ? Element::Int64 : Element::Int32;
        if (isOneOf(code, "ILQN"))
            return isWide ? Element::UInt64 : Element::UInt32;
    }
    refuseElements(values, buffer.format);
}

void checkDimensions(Py_buffer const& buffer)
{
    if (buffer.ndim == 0)
        refuseValues("the array has no dimension: one value is an array of one row");
    if (buffer.ndim > 2)
        refuseValues("the array has " + std::to_string(buffer.ndim) +
                     " dimensions: rows, or rows and columns, can be written");
}

} // namespace

BufferView::BufferView(PyObject* values) : buffer_(), element_(Element::Float32)
{
    if (PyObject_GetBuffer(values, &buffer_, PyBUF_RECORDS_RO) != 0)
        refuseObject(values);
    try {
        element_ = elementOf(buffer_, values);
        checkDimensions(buffer_);
    } catch (...) {
        PyBuffer_Release(&buffer_);
        throw;
    }
}

BufferView::~BufferView()
{
    PyBuffer_Release(&buffer_);
}

Zyl2::Mox2::ArrayView BufferView::view() const
{
    bool const isTable = buffer_.ndim == 2;
    auto const rows = static_cast<std::size_t>(buffer_.shape[0]);
    auto const columns = isTable ? static_cast<std::size_t>(buffer_.shape[1]) : 1;
    return Zyl2::Mox2::ArrayView(buffer_.buf, element_, rows, columns, buffer_.strides[0],
                                 isTable ? buffer_.strides[1] : buffer_.itemsize);
}

} // namespace Python
