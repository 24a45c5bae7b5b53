#ifndef BINDINGS_PYTHON_BUFFERVIEW_H
#define BINDINGS_PYTHON_BUFFERVIEW_H

#include <Python.h>

#include <Zyl2/Mox2/ArrayView.h>

namespace Python {

/// An array of Python, by its buffer: nobody frees or resizes it meanwhile.
///
/// Made and destroyed by a thread that holds the interpreter's lock; looked at by any.
class BufferView
{
public:
    /// \param values whatever exports a buffer of one or two dimensions, of any strides, of floats
    ///               or integers of 32 or 64 bits in the machine's byte order
    /// \throws Zyl2::Exception::InvalidArguments whose detail says what `values` is instead
    explicit BufferView(PyObject* values);
    ~BufferView();

    BufferView(BufferView const&) = delete;
    BufferView& operator=(BufferView const&) = delete;

    /// Values where they are.
    Zyl2::Mox2::ArrayView view() const;

private:
    Py_buffer buffer_;
    Zyl2::Mox2::ArrayView::Element element_;
};

} // namespace Python

#endif
