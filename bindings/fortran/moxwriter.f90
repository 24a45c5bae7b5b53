!> Writes result models: all that the library does, for programs in Fortran, with the same defaults, the same bytes in
!! the file and the same failures as in C++ and C.
!!
!!     use moxwriter
!!     type(mox_model) :: model
!!     integer(int32) :: beam
!!     real(real64) :: coordinates(3, 2), displacement(3, 2)
!!
!!     call model%save_to("beam.mox")
!!     call model%add_node(MOX_ROOT_GROUP, "Beam")
!!     call model%add_node(MOX_SHAPE, "Steel", id=beam)
!!     call model%add_array(MOX_COORDINATES, coordinates, [beam])
!!     call model%add_array(MOX_DISPLACEMENT, displacement, [beam], step="Load 1")
!!     call model%close()
!!
!! **Failures.** Every procedure that can fail has the optional arguments `stat` and `errmsg`, as `allocate` has.
!! `stat` is `MOX_OK`, which is 0, or the kind of the failure; `errmsg` is then what was wrong, in one sentence, and
!! stays as it was otherwise. Without `stat` a failure writes that sentence to the error unit and ends the program
!! by `error stop`. Results of a call that failed are 0. Memory can run out in all of them: `MOX_MEMORY`.
!!
!! **Texts** are taken without their trailing blanks, and otherwise as they are.
!!
!! **Arrays** are taken from where they are. An array of shape (3, n) is n rows of 3, as its memory has them; one of
!! shape (n, 3) is that with `transposed=.true.`. A section such as `values(1:3, ::2)` or `values(2, :)` is
!! taken through its strides, without a copy, too.
!!
!! **Life of a model.** A `mox_model` is empty until `save_to`, which comes first and creates the file. `add_node` and
!! `add_components` build the tree: the first node becomes the root and has the id 1, every further one goes below the
!! current node, and is then the current one. `set_node_data` describes nodes. `add_array` adds values, on the ids of
!! shapes; full blocks of values go to the file at once. `close` writes what is pending and finishes the file. A model
!! that goes out of scope is closed without a word about how that went. Variables of the main program never go out of
!! scope: there `close` has to be called.
!!
!! **Threads.** A variable of these types is used by one thread at a time; different ones may be used at once.
module moxwriter

  use, intrinsic :: iso_c_binding, only: c_associated, c_char, c_f_pointer, c_int, c_int8_t, c_intptr_t, c_loc, &
                                         c_null_char, c_null_ptr, c_ptr, c_size_t
  use, intrinsic :: iso_fortran_env, only: error_unit, int32, int64, real32, real64
  use moxwriter_c

  implicit none
  private

  public :: mox_attributes, mox_model, mox_properties, mox_steps
  public :: mox_status_text, mox_version, mox_version_number

  !> The version of this module.
  integer, parameter, public :: MOX_VERSION_MAJOR = 0
  integer, parameter, public :: MOX_VERSION_MINOR = 9
  integer, parameter, public :: MOX_VERSION_PATCH = 0

  !> How a call ended.
  integer, parameter, public :: MOX_OK = 0
  !> None of the kinds below.
  integer, parameter, public :: MOX_UNKNOWN = 1
  !> A file that can't be opened.
  integer, parameter, public :: MOX_MISCELLANEOUS = 2
  !> A value that the call can't use.
  integer, parameter, public :: MOX_INVALID_ARGUMENTS = 3
  !> The file exists, and overwriting was not asked for.
  integer, parameter, public :: MOX_FILE_OPEN = 5
  !> Bytes did not reach the file, for instance on a full disk.
  integer, parameter, public :: MOX_FILE_WRITE = 7
  !> An id past the last node; a path that names the root only.
  integer, parameter, public :: MOX_OUT_OF_BOUNDS = 11
  !> More rows, ids or bytes than the format can count, or a value that has no place in it.
  integer, parameter, public :: MOX_OVERFLOW = 12
  !> A negative count.
  integer, parameter, public :: MOX_UNDERFLOW = 13
  !> An id that no node has; no node is current.
  integer, parameter, public :: MOX_KEY_NOT_FOUND = 14
  !> Memory ran out.
  integer, parameter, public :: MOX_MEMORY = 16
  !> A call out of order, such as adding before saving.
  integer, parameter, public :: MOX_INVALID_STATE = 17
  !> A property's value of another type than the property expects.
  integer, parameter, public :: MOX_WRONG_TYPE = 19
  !> A path that begins with another name than the root's.
  integer, parameter, public :: MOX_NOT_IMPLEMENTED = 20
  !> A variable whose bits were copied, as by `allocate` with `source`, and whose original is gone.
  integer, parameter, public :: MOX_INVALID_HANDLE = 100

  !> No node has this id, and no call returns it: the id for "none" is 0.
  integer(int32), parameter, public :: MOX_INVALID_ID = -1

  !> Types of nodes. A group whose flag byte is 1; for the first node (the root) only.
  integer, parameter, public :: MOX_FLAGGED_ROOT_GROUP = 1
  !> A group; for the first node (the root) only.
  integer, parameter, public :: MOX_ROOT_GROUP = 2
  !> A group: a named node with a transform and attributes.
  integer, parameter, public :: MOX_GROUP = 3
  !> A shape: a visible part with a material. Below the root, its id is that of its geometry, which is what node data
  !! and arrays are given to.
  integer, parameter, public :: MOX_SHAPE = 4

  !> Types of properties, which one call applies in ascending order. Group: 3 reals x, y, z.
  integer, parameter, public :: MOX_TRANSLATION = 0
  !> Group: 4 reals, the axis x, y, z and the angle in radians.
  integer, parameter, public :: MOX_ROTATION = 1
  !> Group: 3 reals, factors along x, y, z.
  integer, parameter, public :: MOX_SCALE = 2
  !> Shape: 3 or 4 reals red, green, blue in 0..1; a fourth value is ignored.
  integer, parameter, public :: MOX_DIFFUSE_COLOR = 3
  !> Shape: 3 or 4 reals red, green, blue in 0..1; a fourth value is ignored.
  integer, parameter, public :: MOX_SPECULAR_COLOR = 4
  !> Shape: 3 reals red, green, blue in 0..1.
  integer, parameter, public :: MOX_EMISSIVE_COLOR = 5
  !> Shape: 3 reals red, green, blue in 0..1.
  integer, parameter, public :: MOX_AMBIENT_COLOR = 6
  !> Shape: one real, 0 (opaque) to 1.
  integer, parameter, public :: MOX_TRANSPARENCY = 7
  !> Shape: one real; the ambient colour becomes this times the diffuse colour.
  integer, parameter, public :: MOX_AMBIENT_INTENSITY = 8
  !> Shape: one real, 0 to 1.
  integer, parameter, public :: MOX_SHININESS = 9
  !> Setting it always fails.
  integer, parameter, public :: MOX_UNSUPPORTED = 10

  !> Types of arrays; each fixes how many columns an array has (the width). "Connectivity", width 1: rows of the
  !! coordinates, counted from 0, for elements of one, two and three dimensions.
  integer, parameter, public :: MOX_CONNECTIVITY1 = 0
  integer, parameter, public :: MOX_CONNECTIVITY2 = 1
  integer, parameter, public :: MOX_CONNECTIVITY3 = 2
  !> "Polylength", width 1: nodes per element, for elements of one, two and three dimensions.
  integer, parameter, public :: MOX_POLYLENGTH1 = 3
  integer, parameter, public :: MOX_POLYLENGTH2 = 4
  integer, parameter, public :: MOX_POLYLENGTH3 = 5
  !> "Part Elements", width 1, for elements of one, two and three dimensions.
  integer, parameter, public :: MOX_PART_ELEMENTS1 = 6
  integer, parameter, public :: MOX_PART_ELEMENTS2 = 7
  integer, parameter, public :: MOX_PART_ELEMENTS3 = 8
  !> "Coordinates", width 3.
  integer, parameter, public :: MOX_COORDINATES = 9
  !> No default name; width 1, 3, 6 and 6.
  integer, parameter, public :: MOX_RESULT10 = 10
  integer, parameter, public :: MOX_RESULT11 = 11
  integer, parameter, public :: MOX_RESULT12 = 12
  integer, parameter, public :: MOX_RESULT13 = 13
  !> No default name; width 1, 3, 6 and 6.
  integer, parameter, public :: MOX_RESULT14 = 14
  integer, parameter, public :: MOX_RESULT15 = 15
  integer, parameter, public :: MOX_RESULT16 = 16
  integer, parameter, public :: MOX_RESULT17 = 17
  !> No default name; width 1, 3, 6 and 6.
  integer, parameter, public :: MOX_RESULT18 = 18
  integer, parameter, public :: MOX_RESULT19 = 19
  integer, parameter, public :: MOX_RESULT20 = 20
  integer, parameter, public :: MOX_RESULT21 = 21
  !> No default name; width 1.
  integer, parameter, public :: MOX_RESULT22 = 22
  !> No default name; width 1, 3, 6 and 6.
  integer, parameter, public :: MOX_RESULT23 = 23
  integer, parameter, public :: MOX_RESULT24 = 24
  integer, parameter, public :: MOX_RESULT25 = 25
  integer, parameter, public :: MOX_RESULT26 = 26
  !> "Node Ids", width 1.
  integer, parameter, public :: MOX_NODE_IDS = 27
  !> "Element IDs", width 1.
  integer, parameter, public :: MOX_ELEMENT_IDS = 28
  !> "Displacement", width 3.
  integer, parameter, public :: MOX_DISPLACEMENT = 29
  !> "Displacement", width 6.
  integer, parameter, public :: MOX_DISPLACEMENT6 = 30
  !> On nodes, width 1, such as a temperature. No default name, as with all that follow.
  integer, parameter, public :: MOX_NODE_SCALAR = MOX_RESULT10
  !> On nodes, width 3: x, y, z, such as a velocity.
  integer, parameter, public :: MOX_NODE_VECTOR = MOX_RESULT11
  !> On nodes, width 6: translations along x, y, z, then rotations about them.
  integer, parameter, public :: MOX_NODE_VECTOR6 = MOX_RESULT12
  !> On nodes, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
  integer, parameter, public :: MOX_NODE_TENSOR = MOX_RESULT13
  !> On elements, width 1, such as a damage.
  integer, parameter, public :: MOX_ELEMENT_SCALAR = MOX_RESULT14
  !> On elements, width 3: x, y, z.
  integer, parameter, public :: MOX_ELEMENT_VECTOR = MOX_RESULT15
  !> On elements, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
  integer, parameter, public :: MOX_ELEMENT_TENSOR = MOX_RESULT17

  !> What compresses a file; which of them there are is known when the library is built. What the environment variable
  !! MOXWRITER_ENCODER names, and zlib where it names none.
  integer, parameter, public :: MOX_ENCODER_DEFAULT = 0
  !> zlib at level 6. It is always there.
  integer, parameter, public :: MOX_ENCODER_ZLIB = 1
  !> libdeflate: faster, and files as small as zlib's.
  integer, parameter, public :: MOX_ENCODER_LIBDEFLATE = 2
  !> ISA-L: the fastest. Files are somewhat larger, and the same calls may express a block in another way the next time.
  integer, parameter, public :: MOX_ENCODER_ISAL = 3

  !> Kind of the characters of a wide path: ISO 10646 where the compiler has it.
  integer, parameter, public :: mox_wide = merge(selected_char_kind('ISO_10646'), c_char, &
                                                 selected_char_kind('ISO_10646') > 0)

  !> Free named values that describe a node, an array or a step. A variable that was set can't be assigned to another.
  type :: mox_attributes
    private
    type(c_ptr) :: handle = c_null_ptr
  contains
    generic :: set => set_real32, set_real64, set_int32, set_int64, set_text
    procedure :: set_unsigned
    procedure :: clear => clear_attributes
    generic :: assignment(=) => assign_attributes
    procedure, private :: set_real32, set_real64, set_int32, set_int64, set_text
    procedure, private :: assign_attributes
    final :: release_attributes
  end type

  !> The transform of a group, or the material of a shape. A variable that was set can't be assigned to another.
  type :: mox_properties
    private
    type(c_ptr) :: handle = c_null_ptr
  contains
    generic :: set => set_property_real32, set_property_real64, set_property_reals, set_property_doubles, &
                      set_property_int32, set_property_ints, set_property_logical, set_property_text
    procedure :: clear => clear_properties
    generic :: assignment(=) => assign_properties
    procedure, private :: set_property_real32, set_property_real64, set_property_reals, set_property_doubles, &
                          set_property_int32, set_property_ints, set_property_logical, set_property_text
    procedure, private :: assign_properties
    final :: release_properties
  end type

  !> A list of the result steps that an array belongs to. A variable that was added to can't be assigned to another.
  type :: mox_steps
    private
    type(c_ptr) :: handle = c_null_ptr
  contains
    procedure :: add => add_step
    procedure :: clear => clear_steps
    generic :: assignment(=) => assign_steps
    procedure, private :: assign_steps
    final :: release_steps
  end type

  !> One result model and its file. A variable that was used can't be assigned to another.
  type :: mox_model
    private
    type(c_ptr) :: handle = c_null_ptr
  contains
    procedure :: save_to
    procedure :: save_to_wide
    procedure :: add_node
    procedure :: set_node_data
    procedure :: get_node_id
    procedure :: get_node_id_by_names
    procedure :: set_current_node_id
    procedure :: move_to_parent_node
    procedure :: add_components
    procedure :: add_component_map
    generic :: add_array => add_real32_list, add_real64_list, add_int32_list, add_int64_list, &
                            add_real32_table, add_real64_table, add_int32_table, add_int64_table
    procedure :: close => close_model
    procedure :: checkpoint
    procedure :: waited_seconds
    generic :: assignment(=) => assign_model
    procedure, private :: add_real32_list, add_real64_list, add_int32_list, add_int64_list
    procedure, private :: add_real32_table, add_real64_table, add_int32_table, add_int64_table
    procedure, private :: assign_model
    final :: release_model
  end type

  ! For modules that extend `mox_model`: its handle, and how its procedures begin and end.

  public :: mox_handle, mox_give_handle, mox_length_of, mox_make_options, mox_start_of, mox_tell, mox_tell_of
  interface mox_length_of
    module procedure length_of
  end interface
  interface mox_make_options
    module procedure make_options
  end interface
  interface mox_start_of
    module procedure start_of
  end interface
  interface mox_tell
    module procedure tell
  end interface
  interface mox_tell_of
    module procedure tell_of
  end interface

  !> Texts as C takes them, which have to stay where they are, and what belongs to each of them.
  type :: text_list
    type(c_ptr), allocatable :: addresses(:)
    integer(c_size_t), allocatable :: lengths(:)
    type(c_ptr), allocatable :: attributes(:)
    integer(int32), allocatable :: ids(:)
  end type

  !> Somewhere to point to for what has no bytes.
  integer(c_int8_t), target, save :: nowhere = 0

contains

  ! ------------------------------------------------------------------------------------------------- Version, failures

  !> The version of the library in use, such as "1.2.3", which is another than that of this module when a newer shared
  !! library was installed after the program was compiled.
  function mox_version() result(version)
    character(:), allocatable :: version

    version = text_at(c_version())
  end function

  !> The same as a number: major * 1000000 + minor * 1000 + patch.
  integer function mox_version_number()
    mox_version_number = c_version_number()
  end function

  !> What a status means, whatever the call was; "Unknown Exception" for a number that is no status.
  function mox_status_text(status) result(text)
    integer, intent(in) :: status
    character(:), allocatable :: text

    text = text_at(c_status_text(status))
  end function

  ! -------------------------------------------------------------------------------------------------------------- Model

  !> Creates the file and makes an empty model ready for adding. With an empty path no file is created: the model can
  !! be filled, and nothing is written.
  !!
  !! \param path       of the file
  !! \param overwrite  whether an existing file is overwritten, or an error, which is the default
  !! \param text1      first text of the file's writing record, for instance the program's name and version
  !! \param text2      second text of the writing record, used only when the first one is not empty
  !! \param text3      carried along and written nowhere
  !! \param encoder    what compresses the file; `MOX_ENCODER_DEFAULT` when it is absent
  !! \param threads    how many threads of its own the model may start to compress full blocks while the program goes
  !!                   on: 0 to 1024. Absent, or a negative number: what the environment variable MOXWRITER_THREADS
  !!                   says, and 0 where that is not set. The bytes of the file do not depend on it.
  !! \param block_size bytes from which on a block of the file is full: 1 to 4294967294. Absent, or 0: what the
  !!                   environment variable MOXWRITER_DEFAULT_BLOCK_SIZE says, and 200 MiB where that is not set.
  !! \param recoverable whether what was added survives the program, for `mox recover`. Absent: what the environment
  !!                   variable MOXWRITER_RECOVERABLE says, and not where that is not set.
  !! \param stat       `MOX_INVALID_STATE` "Not Empty": the model was saved and not closed since; `MOX_FILE_OPEN` "File
  !!                   exists."; `MOX_MISCELLANEOUS` "Unable to open file ...": the system refuses. After each of the
  !!                   latter two the model must be closed before it can be saved again. `MOX_INVALID_ARGUMENTS` an
  !!                   encoder that the library does not have, a number of threads or a size of blocks out of range.
  !! \param errmsg     what was wrong
  subroutine save_to(this, path, overwrite, text1, text2, text3, encoder, threads, block_size, recoverable, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*), intent(in), target :: path
    logical, intent(in), optional :: overwrite
    character(*), intent(in), optional :: text1
    character(*), intent(in), optional :: text2
    character(*), intent(in), optional :: text3
    integer, intent(in), optional :: encoder
    integer, intent(in), optional :: threads
    integer(int64), intent(in), optional :: block_size
    logical, intent(in), optional :: recoverable
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(c_ptr) :: options
    integer(c_int) :: status

    status = make_options(options, overwrite, text1, text2, text3, encoder, threads, block_size, recoverable)
    if (status == MOX_OK) status = make_model(this)
    if (status /= MOX_OK) then
      call tell(status, c_last_error(), stat, errmsg)
    else
      call tell_of(this, c_model_save_to(this%handle, start_of(path), length_of(path), options), stat, errmsg)
    end if
    status = c_options_destroy(options)
  end subroutine

  !> The same with a wide path, which is narrowed to the low 8 bits of each character. A path of default characters is
  !! what `save_to` takes.
  subroutine save_to_wide(this, path, overwrite, text1, text2, text3, encoder, threads, block_size, &
                          recoverable, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*, kind=mox_wide), intent(in) :: path
    logical, intent(in), optional :: overwrite
    character(*), intent(in), optional :: text1
    character(*), intent(in), optional :: text2
    character(*), intent(in), optional :: text3
    integer, intent(in), optional :: encoder
    integer, intent(in), optional :: threads
    integer(int64), intent(in), optional :: block_size
    logical, intent(in), optional :: recoverable
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(c_ptr) :: options
    integer(c_int) :: status
    integer(c_int), allocatable :: characters(:)
    integer :: lack
    integer :: index

    allocate (characters(len_trim(path)), stat=lack)
    if (lack /= 0) then
      call tell(MOX_MEMORY, c_status_text(MOX_MEMORY), stat, errmsg)
      return
    end if
    do index = 1, size(characters)
      characters(index) = ichar(path(index:index))
    end do
    status = make_options(options, overwrite, text1, text2, text3, encoder, threads, block_size, recoverable)
    if (status == MOX_OK) status = make_model(this)
    if (status /= MOX_OK) then
      call tell(status, c_last_error(), stat, errmsg)
    else
      call tell_of(this, c_model_save_to_wide(this%handle, characters, size(characters, kind=c_size_t), options), &
                   stat, errmsg)
    end if
    status = c_options_destroy(options)
  end subroutine

  !> Adds a node below the current node and makes it current; the first node becomes the root.
  !! Nodes that are to be siblings make their group current first: `set_current_node_id`.
  !!
  !! \param type       a group or a shape; root groups for the first node only
  !! \param name       of the node
  !! \param attributes stored on a group; shapes have none, theirs are dropped
  !! \param id         receives the node's id, for a shape below the root that of its geometry
  !! \param stat       `MOX_INVALID_STATE` "File not open."; `MOX_INVALID_ARGUMENTS` "Invalid node type for root node",
  !!                   "Invalid node type"; `MOX_KEY_NOT_FOUND` the current node is none
  !! \param errmsg     what was wrong
  subroutine add_node(this, type, name, attributes, id, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer, intent(in) :: type
    character(*), intent(in), target :: name
    type(mox_attributes), intent(in), optional :: attributes
    integer(int32), intent(out), optional :: id
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(int32) :: found

    found = 0
    if (is_made(this, stat, errmsg)) &
      call tell_of(this, c_model_add_node(this%handle, type, start_of(name), length_of(name), &
                                          attributes_in(attributes), found), stat, errmsg)
    if (present(id)) id = found
  end subroutine

  !> Sets properties of a node and merges attributes into it. The node becomes current.
  !!
  !! \param id         of a group or a shape, or what `add_node` gave for a shape
  !! \param properties applied in ascending order of their types
  !! \param attributes merged into a group's own; for shapes they are dropped
  !! \param stat       `MOX_INVALID_STATE` "File not open."; `MOX_OUT_OF_BOUNDS` `id` is 0 or past the last node;
  !!                   `MOX_INVALID_ARGUMENTS` "empty node": the node is not of the kind that the property applies to,
  !!                   "invalid array size", "Invalid properties"; `MOX_WRONG_TYPE` a value of another type than the
  !!                   property expects. Properties of lower types stay set.
  !! \param errmsg     what was wrong
  subroutine set_node_data(this, id, properties, attributes, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer(int32), intent(in) :: id
    type(mox_properties), intent(in), optional :: properties
    type(mox_attributes), intent(in), optional :: attributes
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(c_ptr) :: given

    given = c_null_ptr
    if (present(properties)) given = properties%handle
    if (is_made(this, stat, errmsg)) &
      call tell_of(this, c_model_set_node_data(this%handle, id, given, attributes_in(attributes)), stat, errmsg)
  end subroutine

  !> Finds a node by the names from the root down to it. The root becomes current.
  !!
  !! \param path      separator, name of the root, separator, name below it, and so on
  !! \param id        receives the id of the first such node in the order of adding; 0 when there is none or the path
  !!                  is empty
  !! \param separator what stands between the names; "/" when it is absent
  !! \param stat      `MOX_INVALID_STATE` "Not initialized"; `MOX_OUT_OF_BOUNDS` the path names the root only
  !! \param errmsg    what was wrong
  subroutine get_node_id(this, path, id, separator, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*), intent(in), target :: path
    integer(int32), intent(out) :: id
    character(*), intent(in), optional :: separator
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    id = 0
    if (is_made(this, stat, errmsg)) &
      call tell_of(this, c_model_get_node_id(this%handle, start_of(path), length_of(path), start_if(separator), &
                                             length_if(separator), id), stat, errmsg)
  end subroutine

  !> Finds a node by the names from the root down to it. The root becomes current.
  !!
  !! \param names  name of the root, name below it, and so on, which may contain "/", but not the character 30
  !! \param id     receives the id as above; 0 for no names
  !! \param stat   as above
  !! \param errmsg what was wrong
  subroutine get_node_id_by_names(this, names, id, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*), intent(in), target :: names(:)
    integer(int32), intent(out) :: id
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(text_list) :: list

    id = 0
    if (.not. is_made(this, stat, errmsg)) return
    if (is_listed(this, names, list, stat, errmsg)) &
      call tell_of(this, c_model_get_node_id_by_names(this%handle, list%addresses, list%lengths, &
                                                      size(names, kind=c_size_t), id), stat, errmsg)
  end subroutine

  !> Makes a node current.
  !!
  !! \param id     of any node
  !! \param stat   `MOX_INVALID_STATE` "Not initialized"; `MOX_OUT_OF_BOUNDS` `id` is 0 or past the last node
  !! \param errmsg what was wrong
  subroutine set_current_node_id(this, id, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer(int32), intent(in) :: id
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    if (is_made(this, stat, errmsg)) call tell_of(this, c_model_set_current_node_id(this%handle, id), stat, errmsg)
  end subroutine

  !> Makes the current node's parent current; at the root the root stays current. After a shape was added, the first
  !! call leads from its geometry to the shape, the second to the group that holds it.
  !!
  !! \param parent receives the parent's id, 0 at the root
  !! \param stat   `MOX_INVALID_STATE` "Not initialized"; `MOX_KEY_NOT_FOUND` the current node is none
  !! \param errmsg what was wrong
  subroutine move_to_parent_node(this, parent, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer(int32), intent(out), optional :: parent
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(int32) :: found

    found = 0
    if (is_made(this, stat, errmsg)) call tell_of(this, c_model_move_to_parent_node(this%handle, found), stat, errmsg)
    if (present(parent)) parent = found
  end subroutine

  !> Adds the nodes that absolute paths such as /car/body/door name, reusing what exists. All names of a path are
  !! groups, but for the last: it is a shape, or a group when the path ends with the separator. The first name is the
  !! root's. Empty paths are skipped.
  !!
  !! \param paths     absolute paths
  !! \param ids       receives one id for each path, in their order: of a group, or of a shape's geometry; 1 for the
  !!                  root, 0 for a skipped path. What is behind them becomes 0.
  !! \param separator each of its characters separates names; "/" when it is absent
  !! \param stat      `MOX_INVALID_STATE` "File not open."; `MOX_INVALID_ARGUMENTS` "Relative paths not supported", or
  !!                  less room than paths, and then nothing is added; `MOX_NOT_IMPLEMENTED` a first name that is not
  !!                  the root's, and then earlier paths stay added
  !! \param errmsg    what was wrong
  subroutine add_components(this, paths, ids, separator, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*), intent(in), target :: paths(:)
    integer(int32), intent(out), optional :: ids(:)
    character(*), intent(in), optional :: separator
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(text_list) :: list

    if (present(ids)) ids = 0
    if (.not. has_room(this, ids, size(paths), stat, errmsg)) return
    if (.not. is_made(this, stat, errmsg)) return
    if (.not. is_listed(this, paths, list, stat, errmsg)) return
    call tell_of(this, c_model_add_components(this%handle, list%addresses, list%lengths, &
                                              size(paths, kind=c_size_t), start_if(separator), &
                                              length_if(separator), list%ids), stat, errmsg)
    if (present(ids)) ids(:size(paths)) = list%ids
  end subroutine

  !> Adds the nodes that absolute paths name, in ascending order of the paths' bytes; of equal paths the last one
  !! counts.
  !!
  !! \param paths      absolute paths
  !! \param attributes of each path. Stored nowhere.
  !! \param ids        has room for as many ids as there are paths, and receives one for each different path, in
  !!                   ascending order of the paths; what is behind them becomes 0
  !! \param id_count   receives their number
  !! \param separator  each of its characters separates names; "/" when it is absent
  !! \param stat       as above; `MOX_INVALID_ARGUMENTS` another number of attributes than of paths
  !! \param errmsg     what was wrong
  subroutine add_component_map(this, paths, attributes, ids, id_count, separator, stat, errmsg)
    class(mox_model), intent(inout) :: this
    character(*), intent(in), target :: paths(:)
    type(mox_attributes), intent(in), optional :: attributes(:)
    integer(int32), intent(out), optional :: ids(:)
    integer, intent(out), optional :: id_count
    character(*), intent(in), optional :: separator
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(text_list) :: list
    integer(c_size_t) :: found

    found = 0
    if (present(ids)) ids = 0
    if (present(id_count)) id_count = 0
    if (.not. has_room(this, ids, size(paths), stat, errmsg)) return
    if (.not. is_made(this, stat, errmsg)) return
    if (.not. is_listed(this, paths, list, stat, errmsg)) return
    if (present(attributes)) then
      if (size(attributes) /= size(paths)) then
        call refuse_of(this, MOX_INVALID_ARGUMENTS, "Invalid arguments: attributes and paths differ in number", stat, &
                       errmsg)
        return
      end if
      list%attributes = attributes%handle
    end if
    call tell_of(this, c_model_add_component_map(this%handle, list%addresses, list%lengths, list%attributes, &
                                                 size(paths, kind=c_size_t), start_if(separator), &
                                                 length_if(separator), list%ids, found), stat, errmsg)
    if (present(ids)) ids(:size(paths)) = list%ids
    if (present(id_count)) id_count = int(found)
  end subroutine

  ! The eight procedures of `add_array` add values where they are, without a copy of them. The values are written once;
  ! every pair of an id and a step refers to them. An array without rows, or no ids, adds nothing.
  !
  ! type            what the array holds
  ! values          of rank 2: (width of the type, rows); of rank 1: (rows), for types of width 1
  ! ids             the shapes that get the array; an id of a group is passed over
  ! name            default: that of the type. With a step's name it must be unique on a node: a later array of the same
  !                 name takes the earlier one's place.
  ! step            name of the step that the values belong to; without `step` and `steps` they belong to none, such as
  !                 the mesh
  ! steps           the steps, if there are several; a list of none registers the array nowhere
  ! step_attributes what else is known of `step`, such as its time
  ! attributes      of the array; where a step has one of the same name, the array's holds
  ! transposed      of rank 2 only: values are (rows, width of the type)
  ! stat            MOX_INVALID_STATE "File not open."; MOX_INVALID_ARGUMENTS "Can't guess result name for specified
  !                 type": give a name, "Can't guess result width for specified type", default text when the width does
  !                 not match the type, `steps` beside `step` or `step_attributes`; MOX_OVERFLOW more than 2147483647
  !                 rows or ids, more than 4294967295 bytes, or, before anything is written, a finite value of real64
  !                 whose nearest real32 is infinite, a negative integer, or one above 4294967295; MOX_KEY_NOT_FOUND an
  !                 id that no node has, and the current node is then none; MOX_FILE_WRITE; MOX_MEMORY a block can't grow
  ! errmsg          what was wrong

  subroutine add_real32_list(this, type, values, ids, name, step, steps, step_attributes, attributes, stat, errmsg)
    real(real32), intent(in), target :: values(:)
    integer, parameter :: element = c_float32
    include "add_list.inc"
  end subroutine

  subroutine add_real64_list(this, type, values, ids, name, step, steps, step_attributes, attributes, stat, errmsg)
    real(real64), intent(in), target :: values(:)
    integer, parameter :: element = c_float64
    include "add_list.inc"
  end subroutine

  subroutine add_int32_list(this, type, values, ids, name, step, steps, step_attributes, attributes, stat, errmsg)
    integer(int32), intent(in), target :: values(:)
    integer, parameter :: element = c_int32
    include "add_list.inc"
  end subroutine

  subroutine add_int64_list(this, type, values, ids, name, step, steps, step_attributes, attributes, stat, errmsg)
    integer(int64), intent(in), target :: values(:)
    integer, parameter :: element = c_int64
    include "add_list.inc"
  end subroutine

  subroutine add_real32_table(this, type, values, ids, name, step, steps, step_attributes, attributes, transposed, &
                              stat, errmsg)
    real(real32), intent(in), target :: values(:, :)
    integer, parameter :: element = c_float32
    include "add_table.inc"
  end subroutine

  subroutine add_real64_table(this, type, values, ids, name, step, steps, step_attributes, attributes, transposed, &
                              stat, errmsg)
    real(real64), intent(in), target :: values(:, :)
    integer, parameter :: element = c_float64
    include "add_table.inc"
  end subroutine

  subroutine add_int32_table(this, type, values, ids, name, step, steps, step_attributes, attributes, transposed, &
                             stat, errmsg)
    integer(int32), intent(in), target :: values(:, :)
    integer, parameter :: element = c_int32
    include "add_table.inc"
  end subroutine

  subroutine add_int64_table(this, type, values, ids, name, step, steps, step_attributes, attributes, transposed, &
                             stat, errmsg)
    integer(int64), intent(in), target :: values(:, :)
    integer, parameter :: element = c_int64
    include "add_table.inc"
  end subroutine

  !> Writes what is pending and finishes the file. The model is empty afterwards, and may be saved anew; closing an
  !! empty model does nothing.
  !!
  !! \param stat   `MOX_FILE_WRITE` the file is incomplete, or was removed or replaced meanwhile; `MOX_MEMORY`. The file
  !!               is closed then, too, and a second call does nothing.
  !! \param errmsg what was wrong
  subroutine close_model(this, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    if (is_made(this, stat, errmsg)) call tell_of(this, c_model_close(this%handle), stat, errmsg)
  end subroutine

  !> Waits until all that was added so far is on the disk, so that `mox recover` gives it back after a loss of power,
  !! too. The model is as it was.
  !!
  !! \param on_disk whether it is; false, without waiting, for a model that can't be recovered or has no file
  !! \param stat    `MOX_INVALID_STATE` "File not open."; `MOX_FILE_WRITE` it is not on the disk; `MOX_MEMORY`
  !! \param errmsg  what was wrong
  subroutine checkpoint(this, on_disk, stat, errmsg)
    class(mox_model), intent(inout) :: this
    logical, intent(out), optional :: on_disk
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: is_on_disk

    is_on_disk = 0
    if (is_made(this, stat, errmsg)) call tell_of(this, c_model_checkpoint(this%handle, is_on_disk), stat, errmsg)
    if (present(on_disk)) on_disk = is_on_disk /= 0
  end subroutine

  !> How long calls of this model have waited for its threads since `save_to`, `close` included once it has returned. A
  !! program that waits for much of its time gains by another thread, a faster encoder or smaller blocks.
  !!
  !! \param seconds receives it; 0 without threads
  !! \param stat    `MOX_MEMORY`
  !! \param errmsg  what was wrong
  subroutine waited_seconds(this, seconds, stat, errmsg)
    class(mox_model), intent(inout) :: this
    real(real64), intent(out) :: seconds
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    seconds = 0
    if (is_made(this, stat, errmsg)) call tell_of(this, c_model_waited_seconds(this%handle, seconds), stat, errmsg)
  end subroutine

  ! --------------------------------------------------------------------------------------------------------- Attributes

  ! The procedures of `set` insert or overwrite the entry of that name.
  !
  ! name   of the entry
  ! value  real32, int32 stored as they are; real64 as the nearest real32; of int64 the low 32 bits; of a text at most
  !        256 bytes, up to the first zero byte
  ! stat   MOX_MEMORY
  ! errmsg what was wrong

  subroutine set_real32(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    real(real32), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_float(this%handle, start_of(name), length_of(name), value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_real64(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    real(real64), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_double(this%handle, start_of(name), length_of(name), value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_int32(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    integer(int32), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_int32(this%handle, start_of(name), length_of(name), value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_int64(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    integer(int64), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_int64(this%handle, start_of(name), length_of(name), value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_text(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    character(*), intent(in), target :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_string(this%handle, start_of(name), length_of(name), &
                                                           start_of(value), length_of(value))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  !> Inserts or overwrites an integer without sign.
  !!
  !! \param name   of the entry
  !! \param value  from 0 to 4294967295
  !! \param stat   `MOX_OVERFLOW` another value; `MOX_MEMORY`
  !! \param errmsg what was wrong
  subroutine set_unsigned(this, name, value, stat, errmsg)
    class(mox_attributes), intent(inout) :: this
    character(*), intent(in), target :: name
    integer(int64), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(int64), parameter :: largest_signed = huge(0_int32)
    integer(int64), parameter :: numbers = 2 * (largest_signed + 1)
    integer(c_int) :: status
    integer(int32) :: bits

    if (value < 0 .or. value >= numbers) then
      call refuse(MOX_OVERFLOW, "Overflow error: an integer of 32 bits without sign is from 0 to 4294967295", stat, &
                  errmsg)
      return
    end if
    bits = int(merge(value, value - numbers, value <= largest_signed), int32)
    status = make_attributes(this)
    if (status == MOX_OK) status = c_attributes_set_uint32(this%handle, start_of(name), length_of(name), bits)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  !> Removes all entries.
  subroutine clear_attributes(this)
    class(mox_attributes), intent(inout) :: this

    call discard_attributes(this%handle)
  end subroutine

  ! --------------------------------------------------------------------------------------------------------- Properties

  ! The procedures of `set` insert or overwrite the entry of that type. Whether the value is what the property expects,
  ! and whether there is such a property, is checked by `set_node_data`, which applies it.
  !
  ! type   which property
  ! value  a real32 or real64, held as the nearest real32; values: (any) of either; integers, truth values and texts,
  !        which no property expects
  ! stat   MOX_MEMORY
  ! errmsg what was wrong

  subroutine set_property_real32(this, type, value, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    real(real32), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_float(this%handle, type, value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_real64(this, type, value, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    real(real64), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_double(this%handle, type, value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_reals(this, type, values, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    real(real32), intent(in) :: values(:)
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_floats(this%handle, type, values, size(values, kind=c_size_t))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_doubles(this, type, values, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    real(real64), intent(in) :: values(:)
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    call set_property_reals(this, type, real(values, real32), stat, errmsg)
  end subroutine

  subroutine set_property_int32(this, type, value, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    integer(int32), intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_int32(this%handle, type, value)
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_ints(this, type, values, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    integer(int32), intent(in) :: values(:)
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_int32s(this%handle, type, values, size(values, kind=c_size_t))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_logical(this, type, value, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    logical, intent(in) :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_bool(this%handle, type, merge(1_c_int, 0_c_int, value))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  subroutine set_property_text(this, type, value, stat, errmsg)
    class(mox_properties), intent(inout) :: this
    integer, intent(in) :: type
    character(*), intent(in), target :: value
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = make_properties(this)
    if (status == MOX_OK) status = c_properties_set_string(this%handle, type, start_of(value), length_of(value))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  !> Removes all entries.
  subroutine clear_properties(this)
    class(mox_properties), intent(inout) :: this

    call discard_properties(this%handle)
  end subroutine

  ! -------------------------------------------------------------------------------------------------------------- Steps

  !> Adds a step at the end.
  !!
  !! \param name       of the step; empty for values that belong to no step. Together with an array's name it must be
  !!                   unique on a node.
  !! \param attributes what else is known of the step, such as its time
  !! \param stat       `MOX_MEMORY`
  !! \param errmsg     what was wrong
  subroutine add_step(this, name, attributes, stat, errmsg)
    class(mox_steps), intent(inout) :: this
    character(*), intent(in), target :: name
    type(mox_attributes), intent(in), optional :: attributes
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    integer(c_int) :: status

    status = MOX_OK
    if (.not. c_associated(this%handle)) status = c_steps_create(this%handle)
    if (status == MOX_OK) status = c_steps_add(this%handle, start_of(name), length_of(name), attributes_in(attributes))
    call tell(status, c_last_error(), stat, errmsg)
  end subroutine

  !> Removes all entries.
  subroutine clear_steps(this)
    class(mox_steps), intent(inout) :: this

    call discard_steps(this%handle)
  end subroutine

  ! -------------------------------------------------------------------------------------------------- What arrays become

  !> \param bits of an element
  function empty_view(element, bits, rows, columns) result(view)
    integer, intent(in) :: element
    integer, intent(in) :: bits
    integer(c_size_t), intent(in) :: rows
    integer(c_size_t), intent(in) :: columns
    type(c_array) :: view

    view%data = c_loc(nowhere)
    view%element = element
    view%rows = rows
    view%columns = columns
    view%column_stride = bits / storage_size(nowhere)
    view%row_stride = columns * view%column_stride
  end function

  function transposed_view(view) result(transposed)
    type(c_array), intent(in) :: view
    type(c_array) :: transposed

    transposed = view
    transposed%rows = view%columns
    transposed%columns = view%rows
    transposed%row_stride = view%column_stride
    transposed%column_stride = view%row_stride
  end function

  !> \return bytes from one address to the other
  function distance(from, to)
    type(c_ptr), intent(in) :: from
    type(c_ptr), intent(in) :: to
    integer(c_intptr_t) :: distance

    distance = transfer(to, distance) - transfer(from, distance)
  end function

  subroutine add_view(this, type, view, ids, name, step, steps, step_attributes, attributes, stat, errmsg)
    class(mox_model), intent(inout) :: this
    integer, intent(in) :: type
    type(c_array), intent(in) :: view
    integer(int32), intent(in) :: ids(:)
    character(*), intent(in), optional :: name
    character(*), intent(in), optional :: step
    type(mox_steps), intent(in), optional :: steps
    type(mox_attributes), intent(in), optional :: step_attributes
    type(mox_attributes), intent(in), optional :: attributes
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(c_ptr) :: own_steps
    type(c_ptr) :: given
    integer(c_int) :: status

    if (present(steps) .and. (present(step) .or. present(step_attributes))) then
      call refuse_of(this, MOX_INVALID_ARGUMENTS, "Invalid arguments: steps, and another step beside them", stat, errmsg)
      return
    end if
    if (.not. is_made(this, stat, errmsg)) return
    status = make_steps(own_steps, step, steps, step_attributes)
    given = own_steps
    if (present(steps)) then
      if (c_associated(steps%handle)) given = steps%handle
    end if
    if (status /= MOX_OK) then
      call fail_for(this, status, c_last_error())
      call tell(status, c_last_error(), stat, errmsg)
    else
      call tell_of(this, c_model_add_array(this%handle, start_if(name), length_if(name), type, view, ids, &
                                           size(ids, kind=c_size_t), given, attributes_in(attributes)), stat, errmsg)
    end if
    call discard_steps(own_steps)
  end subroutine

  !> Makes the list that stands for the one step that was given, or for a list of none, and none otherwise.
  !! \param own_steps receives it, or null. A variable of `mox_steps` would take memory when it goes out of scope, and
  !!                  end the program where there is none.
  function make_steps(own_steps, step, steps, step_attributes) result(status)
    type(c_ptr), intent(out) :: own_steps
    character(*), intent(in), optional :: step
    type(mox_steps), intent(in), optional :: steps
    type(mox_attributes), intent(in), optional :: step_attributes
    integer(c_int) :: status

    logical :: is_one_step
    logical :: is_empty_list

    own_steps = c_null_ptr
    status = MOX_OK
    is_one_step = present(step) .or. present(step_attributes)
    is_empty_list = .false.
    if (present(steps)) is_empty_list = .not. c_associated(steps%handle)
    if (is_one_step .or. is_empty_list) status = c_steps_create(own_steps)
    if (status /= MOX_OK .or. .not. is_one_step) return
    if (present(step)) then
      status = c_steps_add(own_steps, start_of(step), length_of(step), attributes_in(step_attributes))
    else
      status = c_steps_add(own_steps, start_of(""), 0_c_size_t, attributes_in(step_attributes))
    end if
  end function

  ! --------------------------------------------------------------------------------------------------- What texts become

  !> \return where the text begins
  function start_of(text) result(start)
    character(*), intent(in), target :: text
    type(c_ptr) :: start

    start = c_loc(nowhere)
    if (len(text) > 0) start = c_loc(text(1:1))
  end function

  !> \return the length of a text without its trailing blanks
  function length_of(text) result(length)
    character(*), intent(in) :: text
    integer(c_size_t) :: length

    length = int(len_trim(text), c_size_t)
  end function

  !> The same for a text that may be absent: null.
  function start_if(text) result(start)
    character(*), intent(in), optional, target :: text
    type(c_ptr) :: start

    start = c_null_ptr
    if (present(text)) start = start_of(text)
  end function

  function length_if(text) result(length)
    character(*), intent(in), optional :: text
    integer(c_size_t) :: length

    length = 0
    if (present(text)) length = length_of(text)
  end function

  !> Lists texts as C takes them.
  function is_listed(model, texts, list, stat, errmsg)
    class(mox_model), intent(in) :: model
    character(*), intent(in), target :: texts(:)
    type(text_list), intent(inout) :: list
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg
    logical :: is_listed

    integer :: lack
    integer :: index

    allocate (list%addresses(size(texts)), list%lengths(size(texts)), list%attributes(size(texts)), &
              list%ids(size(texts)), stat=lack)
    is_listed = lack == 0
    if (.not. is_listed) then
      call fail_for(model, MOX_MEMORY, c_status_text(MOX_MEMORY))
      call tell(MOX_MEMORY, c_status_text(MOX_MEMORY), stat, errmsg)
      return
    end if
    list%attributes = c_null_ptr
    list%ids = 0
    do index = 1, size(texts)
      list%addresses(index) = start_of(texts(index))
      list%lengths(index) = length_of(texts(index))
    end do
  end function

  !> A text of C that ends with a zero.
  function bytes_at(address) result(bytes)
    type(c_ptr), intent(in) :: address
    character(kind=c_char), pointer :: bytes(:)

    call c_f_pointer(address, bytes, [c_length(address)])
  end function

  function text_at(address) result(text)
    type(c_ptr), intent(in) :: address
    character(:), allocatable :: text

    allocate (character(c_length(address)) :: text)
    call copy_text(bytes_at(address), text)
  end function

  !> As an assignment does: cut, or filled with blanks.
  subroutine copy_text(bytes, text)
    character(kind=c_char), intent(in) :: bytes(:)
    character(*), intent(inout) :: text

    integer :: index

    text = ""
    do index = 1, min(size(bytes), len(text))
      text(index:index) = bytes(index)
    end do
  end subroutine

  ! ------------------------------------------------------------------------------------------------- How calls have ended

  !> Tells how a call has ended.
  !! \param sentence of a failure
  subroutine tell(status, sentence, stat, errmsg)
    integer, intent(in) :: status
    type(c_ptr), intent(in) :: sentence
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    if (present(stat)) stat = status
    if (status == MOX_OK) return
    if (.not. present(stat)) call stop_with(text_at(sentence))
    if (present(errmsg)) call copy_text(bytes_at(sentence), errmsg)
  end subroutine

  subroutine stop_with(sentence)
    character(*), intent(in) :: sentence

    write (error_unit, "(a)") sentence
    flush (error_unit)
    error stop
  end subroutine

  !> The same for a call of a model.
  subroutine tell_of(model, status, stat, errmsg)
    class(mox_model), intent(in) :: model
    integer, intent(in) :: status
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    call tell(status, c_model_error(model%handle), stat, errmsg)
  end subroutine

  !> Refuses arguments that C would not get to see.
  subroutine refuse(status, sentence, stat, errmsg)
    integer, intent(in) :: status
    character(*), intent(in) :: sentence
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    if (present(stat)) then
      stat = status
      if (present(errmsg)) errmsg = sentence
    else
      call stop_with(sentence)
    end if
  end subroutine

  !> The same for those of a call of a model.
  subroutine refuse_of(model, status, sentence, stat, errmsg)
    class(mox_model), intent(in) :: model
    integer, intent(in) :: status
    character(*), intent(in) :: sentence
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    character(kind=c_char), target :: terminated(len(sentence) + 1)
    integer :: index

    do index = 1, len(sentence)
      terminated(index) = sentence(index:index)
    end do
    terminated(size(terminated)) = c_null_char
    call fail_for(model, status, c_loc(terminated))
    call refuse(status, sentence, stat, errmsg)
  end subroutine

  !> Where many ranks hold the model, each of them learns of what one was refused, even if C does not see it.
  subroutine fail_for(model, reason, sentence)
    class(mox_model), intent(in) :: model
    integer, intent(in) :: reason
    type(c_ptr), intent(in) :: sentence

    integer(c_int) :: status

    if (c_associated(model%handle)) status = c_model_fail(model%handle, reason, sentence)
  end subroutine

  function has_room(model, ids, count, stat, errmsg)
    class(mox_model), intent(in) :: model
    integer(int32), intent(in), optional :: ids(:)
    integer, intent(in) :: count
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg
    logical :: has_room

    has_room = .true.
    if (present(ids)) has_room = size(ids) >= count
    if (.not. has_room) &
      call refuse_of(model, MOX_INVALID_ARGUMENTS, "Invalid arguments: there are more paths than room for ids", stat, &
                     errmsg)
  end function

  ! -------------------------------------------------------------------------------------------------------------- Handles

  function mox_handle(model) result(handle)
    class(mox_model), intent(in) :: model
    type(c_ptr) :: handle

    handle = model%handle
  end function

  !> Ends the handle that the model has had.
  subroutine mox_give_handle(model, handle)
    class(mox_model), intent(inout) :: model
    type(c_ptr), intent(in) :: handle

    call discard_model(model%handle)
    model%handle = handle
  end subroutine

  function make_model(model) result(status)
    class(mox_model), intent(inout) :: model
    integer(c_int) :: status

    status = MOX_OK
    if (.not. c_associated(model%handle)) status = c_model_create(model%handle)
  end function

  !> Makes the model unless that was done, or tells why it can't.
  function is_made(model, stat, errmsg)
    class(mox_model), intent(inout) :: model
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg
    logical :: is_made

    integer(c_int) :: status

    status = make_model(model)
    is_made = status == MOX_OK
    if (.not. is_made) call tell(status, c_last_error(), stat, errmsg)
  end function

  function make_attributes(attributes) result(status)
    class(mox_attributes), intent(inout) :: attributes
    integer(c_int) :: status

    status = MOX_OK
    if (.not. c_associated(attributes%handle)) status = c_attributes_create(attributes%handle)
  end function

  function make_properties(properties) result(status)
    class(mox_properties), intent(inout) :: properties
    integer(c_int) :: status

    status = MOX_OK
    if (.not. c_associated(properties%handle)) status = c_properties_create(properties%handle)
  end function

  !> Makes the options of a call, if it has any.
  !! \param options receives them, or null
  function make_options(options, overwrite, text1, text2, text3, encoder, threads, block_size, recoverable) &
    result(status)
    type(c_ptr), intent(out) :: options
    logical, intent(in), optional :: overwrite
    character(*), intent(in), optional :: text1
    character(*), intent(in), optional :: text2
    character(*), intent(in), optional :: text3
    integer, intent(in), optional :: encoder
    integer, intent(in), optional :: threads
    integer(int64), intent(in), optional :: block_size
    logical, intent(in), optional :: recoverable
    integer(c_int) :: status

    options = c_null_ptr
    status = c_options_create(options)
    if (status == MOX_OK .and. present(overwrite)) &
      status = c_options_set_overwrite(options, merge(1_c_int, 0_c_int, overwrite))
    if (status == MOX_OK .and. present(text1)) &
      status = c_options_set_text1(options, start_if(text1), length_if(text1))
    if (status == MOX_OK .and. present(text2)) &
      status = c_options_set_text2(options, start_if(text2), length_if(text2))
    if (status == MOX_OK .and. present(text3)) &
      status = c_options_set_text3(options, start_if(text3), length_if(text3))
    if (status == MOX_OK .and. present(encoder)) status = c_options_set_encoder(options, encoder)
    if (status == MOX_OK .and. present(threads)) status = c_options_set_threads(options, threads)
    if (status == MOX_OK .and. present(block_size)) status = c_options_set_block_size(options, block_size)
    if (status == MOX_OK .and. present(recoverable)) &
      status = c_options_set_recoverable(options, merge(1_c_int, 0_c_int, recoverable))
  end function

  function attributes_in(attributes) result(handle)
    type(mox_attributes), intent(in), optional :: attributes
    type(c_ptr) :: handle

    handle = c_null_ptr
    if (present(attributes)) handle = attributes%handle
  end function

  ! A second variable with the same handle would end it twice, and there would be two ways to write one file. What was
  ! never used may be assigned, so that variables can be initialised.

  subroutine assign_attributes(to, from)
    class(mox_attributes), intent(inout) :: to
    type(mox_attributes), intent(in) :: from

    if (c_associated(from%handle)) error stop "mox_attributes that were set can't be assigned"
    call discard_attributes(to%handle)
  end subroutine

  subroutine assign_properties(to, from)
    class(mox_properties), intent(inout) :: to
    type(mox_properties), intent(in) :: from

    if (c_associated(from%handle)) error stop "mox_properties that were set can't be assigned"
    call discard_properties(to%handle)
  end subroutine

  subroutine assign_steps(to, from)
    class(mox_steps), intent(inout) :: to
    type(mox_steps), intent(in) :: from

    if (c_associated(from%handle)) error stop "mox_steps that were added to can't be assigned"
    call discard_steps(to%handle)
  end subroutine

  subroutine assign_model(to, from)
    class(mox_model), intent(inout) :: to
    type(mox_model), intent(in) :: from

    if (c_associated(from%handle)) error stop "a mox_model that was used can't be assigned"
    call discard_model(to%handle)
  end subroutine

  impure elemental subroutine release_attributes(attributes)
    type(mox_attributes), intent(inout) :: attributes

    call discard_attributes(attributes%handle)
  end subroutine

  impure elemental subroutine release_properties(properties)
    type(mox_properties), intent(inout) :: properties

    call discard_properties(properties%handle)
  end subroutine

  impure elemental subroutine release_steps(steps)
    type(mox_steps), intent(inout) :: steps

    call discard_steps(steps%handle)
  end subroutine

  impure elemental subroutine release_model(model)
    type(mox_model), intent(inout) :: model

    call discard_model(model%handle)
  end subroutine

  subroutine discard_attributes(handle)
    type(c_ptr), intent(inout) :: handle

    integer(c_int) :: status

    status = c_attributes_destroy(handle)
    handle = c_null_ptr
  end subroutine

  subroutine discard_properties(handle)
    type(c_ptr), intent(inout) :: handle

    integer(c_int) :: status

    status = c_properties_destroy(handle)
    handle = c_null_ptr
  end subroutine

  subroutine discard_steps(handle)
    type(c_ptr), intent(inout) :: handle

    integer(c_int) :: status

    status = c_steps_destroy(handle)
    handle = c_null_ptr
  end subroutine

  subroutine discard_model(handle)
    type(c_ptr), intent(inout) :: handle

    integer(c_int) :: status

    status = c_model_destroy(handle)
    handle = c_null_ptr
  end subroutine

end module
