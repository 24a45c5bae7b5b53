!> The functions of moxwriter.h as Fortran calls them. Hosts use the module `moxwriter`, which stands on this one.
!!
!! Texts are an address and a length; an absent one is a null pointer. Handles are addresses, too.
module moxwriter_c

  use, intrinsic :: iso_c_binding, only: c_double, c_float, c_int, c_int32_t, c_int64_t, c_intptr_t, &
                                         c_null_ptr, c_ptr, c_size_t

  implicit none
  public

  !> Values where they are: `mox_array`.
  type, bind(c) :: c_array
    type(c_ptr) :: data = c_null_ptr
    integer(c_int) :: element = 0
    integer(c_size_t) :: rows = 0
    integer(c_size_t) :: columns = 0
    integer(c_intptr_t) :: row_stride = 0
    integer(c_intptr_t) :: column_stride = 0
  end type

  !> Types of elements: `mox_element`.
  integer(c_int), parameter :: c_float32 = 0
  integer(c_int), parameter :: c_float64 = 1
  integer(c_int), parameter :: c_int32 = 2
  integer(c_int), parameter :: c_int64 = 4

  interface

    ! Version and failures

    function c_version() result(text) bind(c, name="mox_version")
      import :: c_ptr
      type(c_ptr) :: text
    end function

    function c_version_number() result(number) bind(c, name="mox_version_number")
      import :: c_int
      integer(c_int) :: number
    end function

    function c_status_text(status) result(text) bind(c, name="mox_status_text")
      import :: c_int, c_ptr
      integer(c_int), value :: status
      type(c_ptr) :: text
    end function

    function c_last_error() result(text) bind(c, name="mox_last_error")
      import :: c_ptr
      type(c_ptr) :: text
    end function

    function c_length(text) result(length) bind(c, name="strlen")
      import :: c_ptr, c_size_t
      type(c_ptr), value :: text
      integer(c_size_t) :: length
    end function

    ! Models

    function c_model_create(model) result(status) bind(c, name="mox_model_create")
      import :: c_int, c_ptr
      type(c_ptr), intent(inout) :: model
      integer(c_int) :: status
    end function

    function c_model_destroy(model) result(status) bind(c, name="mox_model_destroy")
      import :: c_int, c_ptr
      type(c_ptr), value :: model
      integer(c_int) :: status
    end function

    function c_model_error(model) result(text) bind(c, name="mox_model_error")
      import :: c_ptr
      type(c_ptr), value :: model
      type(c_ptr) :: text
    end function

    !> Of models that many ranks hold; nothing for others.
    function c_model_fail(model, reason, sentence) result(status) bind(c, name="mox_model_fail")
      import :: c_int, c_ptr
      type(c_ptr), value :: model, sentence
      integer(c_int), value :: reason
      integer(c_int) :: status
    end function

    function c_model_save_to(model, path, path_length, options) result(status) bind(c, name="mox_model_save_to")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: model, path, options
      integer(c_size_t), value :: path_length
      integer(c_int) :: status
    end function

    !> With characters of wchar_t, which is an int.
    function c_model_save_to_wide(model, path, path_length, options) result(status) &
        bind(c, name="mox_model_save_to_wide")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: model, options
      integer(c_int), intent(in) :: path(*)
      integer(c_size_t), value :: path_length
      integer(c_int) :: status
    end function

    function c_model_add_node(model, type, name, name_length, attributes, id) result(status) &
        bind(c, name="mox_model_add_node")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model, name, attributes
      integer(c_int), value :: type
      integer(c_size_t), value :: name_length
      integer(c_int32_t), intent(inout) :: id
      integer(c_int) :: status
    end function

    function c_model_set_node_data(model, id, properties, attributes) result(status) &
        bind(c, name="mox_model_set_node_data")
      import :: c_int, c_int32_t, c_ptr
      type(c_ptr), value :: model, properties, attributes
      integer(c_int32_t), value :: id
      integer(c_int) :: status
    end function

    function c_model_get_node_id(model, path, path_length, separator, separator_length, id) result(status) &
        bind(c, name="mox_model_get_node_id")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model, path, separator
      integer(c_size_t), value :: path_length, separator_length
      integer(c_int32_t), intent(inout) :: id
      integer(c_int) :: status
    end function

    function c_model_get_node_id_by_names(model, names, name_lengths, name_count, id) result(status) &
        bind(c, name="mox_model_get_node_id_by_names")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model
      type(c_ptr), intent(in) :: names(*)
      integer(c_size_t), intent(in) :: name_lengths(*)
      integer(c_size_t), value :: name_count
      integer(c_int32_t), intent(inout) :: id
      integer(c_int) :: status
    end function

    function c_model_set_current_node_id(model, id) result(status) bind(c, name="mox_model_set_current_node_id")
      import :: c_int, c_int32_t, c_ptr
      type(c_ptr), value :: model
      integer(c_int32_t), value :: id
      integer(c_int) :: status
    end function

    function c_model_move_to_parent_node(model, parent) result(status) bind(c, name="mox_model_move_to_parent_node")
      import :: c_int, c_int32_t, c_ptr
      type(c_ptr), value :: model
      integer(c_int32_t), intent(inout) :: parent
      integer(c_int) :: status
    end function

    function c_model_add_components(model, paths, path_lengths, path_count, separator, separator_length, ids) &
        result(status) bind(c, name="mox_model_add_components")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model, separator
      type(c_ptr), intent(in) :: paths(*)
      integer(c_size_t), intent(in) :: path_lengths(*)
      integer(c_size_t), value :: path_count, separator_length
      integer(c_int32_t), intent(inout) :: ids(*)
      integer(c_int) :: status
    end function

    function c_model_add_component_map(model, paths, path_lengths, attributes, path_count, separator, &
        separator_length, ids, id_count) result(status) bind(c, name="mox_model_add_component_map")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model, separator
      type(c_ptr), intent(in) :: paths(*), attributes(*)
      integer(c_size_t), intent(in) :: path_lengths(*)
      integer(c_size_t), value :: path_count, separator_length
      integer(c_int32_t), intent(inout) :: ids(*)
      integer(c_size_t), intent(inout) :: id_count
      integer(c_int) :: status
    end function

    function c_model_add_array(model, name, name_length, type, values, ids, id_count, steps, attributes) &
        result(status) bind(c, name="mox_model_add_array")
      import :: c_array, c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: model, name, steps, attributes
      integer(c_size_t), value :: name_length, id_count
      integer(c_int), value :: type
      type(c_array), intent(in) :: values
      integer(c_int32_t), intent(in) :: ids(*)
      integer(c_int) :: status
    end function

    function c_model_close(model) result(status) bind(c, name="mox_model_close")
      import :: c_int, c_ptr
      type(c_ptr), value :: model
      integer(c_int) :: status
    end function

    function c_model_checkpoint(model, on_disk) result(status) bind(c, name="mox_model_checkpoint")
      import :: c_int, c_ptr
      type(c_ptr), value :: model
      integer(c_int), intent(inout) :: on_disk
      integer(c_int) :: status
    end function

    function c_model_waited_seconds(model, seconds) result(status) bind(c, name="mox_model_waited_seconds")
      import :: c_double, c_int, c_ptr
      type(c_ptr), value :: model
      real(c_double), intent(inout) :: seconds
      integer(c_int) :: status
    end function

    ! Options

    function c_options_set_threads(options, threads) result(status) bind(c, name="mox_options_set_threads")
      import :: c_int, c_ptr
      type(c_ptr), value :: options
      integer(c_int), value :: threads
      integer(c_int) :: status
    end function

    function c_options_set_recoverable(options, recoverable) result(status) bind(c, name="mox_options_set_recoverable")
      import :: c_int, c_ptr
      type(c_ptr), value :: options
      integer(c_int), value :: recoverable
      integer(c_int) :: status
    end function

    function c_options_set_block_size(options, bytes) result(status) bind(c, name="mox_options_set_block_size")
      import :: c_int, c_int64_t, c_ptr
      type(c_ptr), value :: options
      integer(c_int64_t), value :: bytes
      integer(c_int) :: status
    end function

    function c_options_create(options) result(status) bind(c, name="mox_options_create")
      import :: c_int, c_ptr
      type(c_ptr), intent(inout) :: options
      integer(c_int) :: status
    end function

    function c_options_destroy(options) result(status) bind(c, name="mox_options_destroy")
      import :: c_int, c_ptr
      type(c_ptr), value :: options
      integer(c_int) :: status
    end function

    function c_options_set_overwrite(options, overwrite) result(status) bind(c, name="mox_options_set_overwrite")
      import :: c_int, c_ptr
      type(c_ptr), value :: options
      integer(c_int), value :: overwrite
      integer(c_int) :: status
    end function

    function c_options_set_encoder(options, encoder) result(status) bind(c, name="mox_options_set_encoder")
      import :: c_int, c_ptr
      type(c_ptr), value :: options
      integer(c_int), value :: encoder
      integer(c_int) :: status
    end function

    function c_options_set_text1(options, text, length) result(status) bind(c, name="mox_options_set_text1")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: options, text
      integer(c_size_t), value :: length
      integer(c_int) :: status
    end function

    function c_options_set_text2(options, text, length) result(status) bind(c, name="mox_options_set_text2")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: options, text
      integer(c_size_t), value :: length
      integer(c_int) :: status
    end function

    function c_options_set_text3(options, text, length) result(status) bind(c, name="mox_options_set_text3")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: options, text
      integer(c_size_t), value :: length
      integer(c_int) :: status
    end function

    ! Attributes

    function c_attributes_create(attributes) result(status) bind(c, name="mox_attributes_create")
      import :: c_int, c_ptr
      type(c_ptr), intent(inout) :: attributes
      integer(c_int) :: status
    end function

    function c_attributes_destroy(attributes) result(status) bind(c, name="mox_attributes_destroy")
      import :: c_int, c_ptr
      type(c_ptr), value :: attributes
      integer(c_int) :: status
    end function

    function c_attributes_clear(attributes) result(status) bind(c, name="mox_attributes_clear")
      import :: c_int, c_ptr
      type(c_ptr), value :: attributes
      integer(c_int) :: status
    end function

    function c_attributes_set_float(attributes, name, name_length, value) result(status) &
        bind(c, name="mox_attributes_set_float")
      import :: c_float, c_int, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name
      integer(c_size_t), value :: name_length
      real(c_float), value :: value
      integer(c_int) :: status
    end function

    function c_attributes_set_double(attributes, name, name_length, value) result(status) &
        bind(c, name="mox_attributes_set_double")
      import :: c_double, c_int, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name
      integer(c_size_t), value :: name_length
      real(c_double), value :: value
      integer(c_int) :: status
    end function

    function c_attributes_set_int32(attributes, name, name_length, value) result(status) &
        bind(c, name="mox_attributes_set_int32")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name
      integer(c_size_t), value :: name_length
      integer(c_int32_t), value :: value
      integer(c_int) :: status
    end function

    !> With the bits of a number without sign.
    function c_attributes_set_uint32(attributes, name, name_length, value) result(status) &
        bind(c, name="mox_attributes_set_uint32")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name
      integer(c_size_t), value :: name_length
      integer(c_int32_t), value :: value
      integer(c_int) :: status
    end function

    function c_attributes_set_int64(attributes, name, name_length, value) result(status) &
        bind(c, name="mox_attributes_set_int64")
      import :: c_int, c_int64_t, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name
      integer(c_size_t), value :: name_length
      integer(c_int64_t), value :: value
      integer(c_int) :: status
    end function

    function c_attributes_set_string(attributes, name, name_length, value, value_length) result(status) &
        bind(c, name="mox_attributes_set_string")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: attributes, name, value
      integer(c_size_t), value :: name_length, value_length
      integer(c_int) :: status
    end function

    ! Properties

    function c_properties_create(properties) result(status) bind(c, name="mox_properties_create")
      import :: c_int, c_ptr
      type(c_ptr), intent(inout) :: properties
      integer(c_int) :: status
    end function

    function c_properties_destroy(properties) result(status) bind(c, name="mox_properties_destroy")
      import :: c_int, c_ptr
      type(c_ptr), value :: properties
      integer(c_int) :: status
    end function

    function c_properties_clear(properties) result(status) bind(c, name="mox_properties_clear")
      import :: c_int, c_ptr
      type(c_ptr), value :: properties
      integer(c_int) :: status
    end function

    function c_properties_set_float(properties, type, value) result(status) bind(c, name="mox_properties_set_float")
      import :: c_float, c_int, c_ptr
      type(c_ptr), value :: properties
      integer(c_int), value :: type
      real(c_float), value :: value
      integer(c_int) :: status
    end function

    function c_properties_set_double(properties, type, value) result(status) bind(c, name="mox_properties_set_double")
      import :: c_double, c_int, c_ptr
      type(c_ptr), value :: properties
      integer(c_int), value :: type
      real(c_double), value :: value
      integer(c_int) :: status
    end function

    function c_properties_set_floats(properties, type, values, count) result(status) &
        bind(c, name="mox_properties_set_floats")
      import :: c_float, c_int, c_ptr, c_size_t
      type(c_ptr), value :: properties
      integer(c_int), value :: type
      real(c_float), intent(in) :: values(*)
      integer(c_size_t), value :: count
      integer(c_int) :: status
    end function

    function c_properties_set_int32(properties, type, value) result(status) bind(c, name="mox_properties_set_int32")
      import :: c_int, c_int32_t, c_ptr
      type(c_ptr), value :: properties
      integer(c_int), value :: type
      integer(c_int32_t), value :: value
      integer(c_int) :: status
    end function

    function c_properties_set_bool(properties, type, value) result(status) bind(c, name="mox_properties_set_bool")
      import :: c_int, c_ptr
      type(c_ptr), value :: properties
      integer(c_int), value :: type, value
      integer(c_int) :: status
    end function

    function c_properties_set_int32s(properties, type, values, count) result(status) &
        bind(c, name="mox_properties_set_int32s")
      import :: c_int, c_int32_t, c_ptr, c_size_t
      type(c_ptr), value :: properties
      integer(c_int), value :: type
      integer(c_int32_t), intent(in) :: values(*)
      integer(c_size_t), value :: count
      integer(c_int) :: status
    end function

    function c_properties_set_string(properties, type, value, length) result(status) &
        bind(c, name="mox_properties_set_string")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: properties, value
      integer(c_int), value :: type
      integer(c_size_t), value :: length
      integer(c_int) :: status
    end function

    ! Steps

    function c_steps_create(steps) result(status) bind(c, name="mox_steps_create")
      import :: c_int, c_ptr
      type(c_ptr), intent(inout) :: steps
      integer(c_int) :: status
    end function

    function c_steps_destroy(steps) result(status) bind(c, name="mox_steps_destroy")
      import :: c_int, c_ptr
      type(c_ptr), value :: steps
      integer(c_int) :: status
    end function

    function c_steps_clear(steps) result(status) bind(c, name="mox_steps_clear")
      import :: c_int, c_ptr
      type(c_ptr), value :: steps
      integer(c_int) :: status
    end function

    function c_steps_add(steps, name, name_length, attributes) result(status) bind(c, name="mox_steps_add")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), value :: steps, name, attributes
      integer(c_size_t), value :: name_length
      integer(c_int) :: status
    end function

  end interface

end module
