! The module as hosts use it: what it does beside calling C, which tests/languages compares with C++.
module binding_tests

  use, intrinsic :: iso_fortran_env, only: error_unit, int32, int64, real32, real64
  use moxwriter

  implicit none
  private

  public :: test_all, fail_without_stat, assign_used_model

  integer :: failures = 0
  integer :: stat
  character(300) :: sentence

contains

  subroutine expect(holds, what)
    logical, intent(in) :: holds
    character(*), intent(in) :: what

    if (holds) return
    failures = failures + 1
    write (error_unit, "(3a, i0, 2a)") what, ":", " status ", stat, ", ", trim(sentence)
  end subroutine

  ! \param part of the sentence
  subroutine expect_failure(status, part)
    integer, intent(in) :: status
    character(*), intent(in) :: part

    call expect(stat == status .and. index(sentence, part) > 0, "not refused as """//part//"""")
    sentence = "stays"
    stat = -1
  end subroutine

  ! \param folder for models
  subroutine test_all(folder)
    character(*), intent(in) :: folder

    sentence = "stays"
    call test_versions()
    call test_life(folder//"/life.mox")
    call test_files(folder//"/file.mox")
    call test_texts()
    call test_arrays()
    call test_sections(folder//"/sections.mox")
    call test_steps()
    call test_nodes()
    call test_components()
    call test_sets()
    call leave_open(folder//"/finalised.mox")
    call leave_array_open(folder)
    call expect_overwritable(folder//"/finalised.mox")
    if (failures > 0) error stop
  end subroutine

  subroutine test_versions()
    character(20) :: version

    write (version, "(i0, '.', i0, '.', i0)") MOX_VERSION_MAJOR, MOX_VERSION_MINOR, MOX_VERSION_PATCH
    call expect(mox_version() == version, "version "//mox_version())
    call expect(mox_version_number() == MOX_VERSION_MAJOR*1000000 + MOX_VERSION_MINOR*1000 + MOX_VERSION_PATCH, &
                "number of the version")
    call expect(mox_status_text(MOX_OVERFLOW) == "Overflow error", "text of a status")
    call expect(mox_status_text(-5) == "Unknown Exception", "text of no status")
  end subroutine

  subroutine test_life(path)
    character(*), intent(in) :: path
    type(mox_model) :: model
    integer(int32) :: id
    integer :: round

    call model%close()
    call model%add_node(MOX_ROOT_GROUP, "Root", id=id, stat=stat, errmsg=sentence)
    call expect(id == 0, "id of no node")
    call expect_failure(MOX_INVALID_STATE, "File not open.")
    call model%get_node_id("/Root/a", id, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_STATE, "Not initialized")
    do round = 1, 2
      call model%save_to(path, overwrite=.true., text1="tests", text2="fortran", text3="nowhere")
      call model%save_to(path, stat=stat, errmsg=sentence)
      call expect_failure(MOX_INVALID_STATE, "Not Empty")
      call model%add_node(MOX_ROOT_GROUP, "Root", stat=stat, errmsg=sentence)
      call expect(stat == MOX_OK .and. sentence == "stays", "errmsg of a call that ended well")
      call model%close(stat, sentence)
      call model%close(stat, sentence)
      call expect(stat == MOX_OK .and. sentence == "stays", "closing twice")
    end do
  end subroutine

  subroutine test_files(path)
    character(*), intent(in) :: path
    type(mox_model) :: model
    type(mox_model) :: other
    character(12) :: short
    real(real64) :: seconds
    logical :: on_disk

    call model%save_to(path, overwrite=.true.)
    call other%save_to(path, stat=stat, errmsg=sentence)
    call expect_failure(MOX_FILE_OPEN, "File exists.")
    call other%close()
    call other%save_to("no folder/a.mox", stat=stat, errmsg=sentence)
    call expect_failure(MOX_MISCELLANEOUS, "no folder/a.mox")
    call other%close()
    call other%save_to("no folder/a.mox", stat=stat, errmsg=short)
    call expect(short == "Unable to op", "a sentence that is cut: "//short)
    call other%close()
    call other%save_to("no folder/a.mox", stat=stat)
    call expect(stat == MOX_MISCELLANEOUS, "stat without errmsg")
    call other%close()
    call other%save_to("", encoder=99, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "encoder")
    call other%close()
    call other%save_to("", threads=1025, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "1025 threads")
    call other%close()
    call other%save_to("", block_size=-1_int64, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "blocks of")
    call other%close()
    call other%save_to("", encoder=MOX_ENCODER_ZLIB, threads=2, block_size=1000_int64)
    call other%waited_seconds(seconds)
    call expect(.not. seconds > 0, "seconds without a full block")
    call other%close()
    call other%save_to(path // ".recoverable", overwrite=.true., recoverable=.true.)
    call other%checkpoint(on_disk)
    call expect(on_disk, "a checkpoint")
    call other%close()
    call other%save_to(path // ".recoverable", overwrite=.true., recoverable=.false.)
    call other%checkpoint(on_disk)
    call expect(.not. on_disk, "a checkpoint of what can't be recovered")
    call other%close()
    call other%checkpoint(stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_STATE, "File not open.")
    call model%close()
  end subroutine

  subroutine test_texts()
    type(mox_model) :: model
    character(20) :: name = "Root"
    character(15) :: names(2)
    integer(int32), parameter :: shape = 2
    integer(int32) :: found

    call model%save_to("   ")
    call model%add_node(MOX_ROOT_GROUP, name)
    call model%add_node(MOX_SHAPE, "Steel plate   ")
    call model%get_node_id("/Root/Steel plate  ", found)
    call expect(found == shape, "a path with blanks at its end")
    call model%get_node_id("::Root::Steel plate", found, separator=":: ")
    call expect(found == shape, "a separator with a blank at its end")
    names = [character(15) :: "Root", "Steel plate"]
    call model%get_node_id_by_names(names, found)
    call expect(found == shape, "names that are padded")
    call model%get_node_id_by_names(names(2:1:-1), found)
    call expect(found == 0, "names in another order")
    names = names(2:1:-1)
    call model%get_node_id_by_names(names(2:1:-1), found)
    call expect(found == shape, "names that are padded")
    call model%get_node_id_by_names([character(15) ::], found)
    call expect(found == 0, "no names")
    call model%get_node_id("/Root", found, stat=stat, errmsg=sentence)
    call expect_failure(MOX_OUT_OF_BOUNDS, "")
  end subroutine

  function open_model(model) result(shape)
    type(mox_model), intent(inout) :: model
    integer(int32) :: shape

    call model%save_to("")
    call model%add_node(MOX_ROOT_GROUP, "Root")
    call model%add_node(MOX_SHAPE, "Shape", id=shape)
  end function

  subroutine test_arrays()
    type(mox_model) :: model
    integer(int32) :: shape
    real(real64) :: doubles(3, 4)
    real(real32) :: floats(4, 3)
    integer(int64) :: longs(5)

    shape = open_model(model)
    doubles = 1
    floats = 2
    longs = 4294967295_int64
    call model%add_array(MOX_DISPLACEMENT, doubles, [shape, shape])
    call model%add_array(MOX_DISPLACEMENT, floats, [shape], step="1", transposed=.true.)
    call model%add_array(MOX_DISPLACEMENT, doubles, [shape], step="2", transposed=.false.)
    call model%add_array(MOX_NODE_IDS, longs, [shape])
    call model%add_array(MOX_ELEMENT_IDS, [1, 2], [shape])
    call model%add_array(MOX_RESULT10, [1.0, 2.0], [shape], name="  Temperature ")
    call model%add_array(MOX_RESULT10, floats(1:0, 1), [shape], name="Nothing")
    call model%add_array(MOX_COORDINATES, floats, [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "Coordinates needs 3 columns, the array has 4")
    call model%add_array(MOX_RESULT10, [1.0], [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "Can't guess result name for specified type")
    call model%add_array(MOX_COORDINATES, doubles, [shape + 1], stat=stat, errmsg=sentence)
    call expect_failure(MOX_KEY_NOT_FOUND, "")
    doubles(2, 3) = 1e39_real64
    call model%add_array(MOX_COORDINATES, doubles, [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_OVERFLOW, "row 2, column 1")
    call model%add_array(MOX_COORDINATES, doubles(:, 4:1:-1), [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_OVERFLOW, "row 1, column 1")
    call model%add_array(MOX_COORDINATES, doubles(:, 2:3), [shape], transposed=.true., stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "Coordinates needs 3 columns, the array has 2")
    longs(4) = longs(4) + 1
    call model%add_array(MOX_NODE_IDS, longs(2::2), [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_OVERFLOW, "row 1, column 0")
    call model%add_array(MOX_NODE_IDS, [3, -1], [shape], stat=stat, errmsg=sentence)
    call expect_failure(MOX_OVERFLOW, "-1")
  end subroutine

  ! The most memory that this process has had, in megabytes.
  integer function most_memory()
    integer :: unit
    integer :: status
    character(100) :: line

    most_memory = 0
    open (newunit=unit, file="/proc/self/status", action="read", status="old")
    do
      read (unit, "(a)", iostat=status) line
      if (status /= 0) exit
      if (line(1:6) == "VmHWM:") read (line(7:), *) most_memory
    end do
    close (unit)
    most_memory = most_memory/1024
  end function

  ! A temporary of the section would have 96 megabytes.
  subroutine test_sections(path)
    character(*), intent(in) :: path
    integer, parameter :: rows = 4000000
    type(mox_model) :: model
    real(real64), allocatable :: state(:, :)
    integer(int32) :: shape
    integer :: before

    allocate (state(4, rows))
    state = 1
    call model%save_to(path, overwrite=.true.)
    call model%add_node(MOX_ROOT_GROUP, "Root")
    call model%add_node(MOX_SHAPE, "Shape", id=shape)
    before = most_memory()
    call model%add_array(MOX_DISPLACEMENT, state(1:3, :), [shape])
    call model%add_array(MOX_RESULT10, state(4, :), [shape], name="Pressure")
    call expect(before > 100, "memory is not told")
    call expect(most_memory() < before + 48, "sections are copied")
    call model%close()
  end subroutine

  subroutine test_steps()
    type(mox_model) :: model
    type(mox_steps) :: steps
    type(mox_steps) :: none
    type(mox_attributes) :: time
    integer(int32) :: shape
    real :: values(2) = [1.0, 2.0]

    shape = open_model(model)
    call time%set("Time", 0.5_real64)
    call steps%add("1", time)
    call steps%add("2")
    call model%add_array(MOX_RESULT10, values, [shape], name="A", steps=steps, attributes=time)
    call model%add_array(MOX_RESULT10, values, [shape], name="A", step="3", step_attributes=time)
    call model%add_array(MOX_RESULT10, values, [shape], name="B", step_attributes=time)
    call model%add_array(MOX_RESULT10, values, [shape], name="C", steps=none)
    call model%add_array(MOX_RESULT10, values, [shape], name="D", step="1", steps=steps, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "steps, and another step beside them")
    call steps%clear()
    call model%add_array(MOX_RESULT10, values, [shape], name="E", steps=steps, step_attributes=time, stat=stat, &
                         errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "steps, and another step beside them")
  end subroutine

  subroutine test_nodes()
    type(mox_model) :: model
    type(mox_properties) :: properties
    type(mox_attributes) :: attributes
    integer(int32) :: parent
    integer(int32) :: shape

    shape = open_model(model)
    call model%move_to_parent_node(parent)
    call expect(parent > 1 .and. parent < shape, "a geometry's parent is its shape")
    call model%move_to_parent_node(parent)
    call expect(parent == 1, "a shape's parent")
    call attributes%set("Author", "me")
    call model%add_node(MOX_GROUP, "Group", attributes)
    call properties%set(MOX_DIFFUSE_COLOR, [0.8, 0.1, 0.1])
    call properties%set(MOX_TRANSPARENCY, 0.5_real64)
    call model%set_node_data(shape, properties)
    call model%set_node_data(1_int32, attributes=attributes)
    call model%set_node_data(1_int32, properties, stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "node 1 is a group")
    call properties%set(MOX_TRANSPARENCY, .true.)
    call model%set_node_data(shape, properties, stat=stat, errmsg=sentence)
    call expect_failure(MOX_WRONG_TYPE, "Transparency")
    call properties%clear()
    call model%set_node_data(shape, properties)
    call model%set_current_node_id(1_int32)
    call model%set_current_node_id(MOX_INVALID_ID, stat, sentence)
    call expect_failure(MOX_OUT_OF_BOUNDS, "")
    call model%add_node(77, "Node", stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "Invalid node type")
  end subroutine

  subroutine test_components()
    type(mox_model) :: model
    type(mox_attributes) :: attributes(3)
    character(12) :: paths(3) = [character(12) :: "/Car/wheel", "", "/Car/door/"]
    integer(int32) :: ids(5)
    integer :: id_count

    call attributes(2)%set("Author", "me")
    call model%save_to("")
    ids = -1
    call model%add_components(paths, ids(1:2), stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "more paths than room for ids")
    call model%add_components(paths, ids)
    call expect(all(ids([2, 4, 5]) == 0) .and. ids(1) > 1 .and. ids(3) > 1, "ids of components")
    call model%add_component_map(paths, attributes, ids(5:1:-2), id_count)
    call expect(id_count == 3 .and. ids(5) == 0 .and. ids(3) > 1 .and. ids(1) > 1, "ids in the order of paths")
    call model%add_component_map(paths, attributes(1:2), stat=stat, errmsg=sentence)
    call expect_failure(MOX_INVALID_ARGUMENTS, "attributes and paths differ in number")
    call model%add_components(paths(1:0))
    call model%add_components([character(12) :: "wheel"], ids, stat=stat, errmsg=sentence)
    call expect(ids(1) == 0, "ids of a call that failed")
    call expect_failure(MOX_INVALID_ARGUMENTS, "Relative paths not supported")
    call model%add_components([character(12) :: "|Bus"], separator="|", stat=stat, errmsg=sentence)
    call expect_failure(MOX_NOT_IMPLEMENTED, "Bus")
  end subroutine

  subroutine test_sets()
    type(mox_attributes) :: attributes
    type(mox_attributes) :: initial

    call attributes%set_unsigned("a", 4294967295_int64)
    call attributes%set_unsigned("a", 0_int64, stat, sentence)
    call expect(stat == MOX_OK, "an integer without sign")
    call attributes%set_unsigned("a", 4294967296_int64, stat, sentence)
    call expect_failure(MOX_OVERFLOW, "from 0 to 4294967295")
    call attributes%set_unsigned("a", -1_int64, stat, sentence)
    call expect_failure(MOX_OVERFLOW, "from 0 to 4294967295")
    attributes = initial
    attributes = mox_attributes()
    call attributes%clear()
    call attributes%set("", "")
  end subroutine

  ! Files of models that nobody closed are whole when their variables are gone.
  subroutine leave_open(path)
    character(*), intent(in) :: path
    type(mox_model) :: model

    call model%save_to(path, overwrite=.true.)
    call model%add_node(MOX_ROOT_GROUP, "Root")
  end subroutine

  subroutine leave_array_open(folder)
    character(*), intent(in) :: folder
    type(mox_model), allocatable :: models(:)

    allocate (models(2))
    call models(1)%save_to(folder//"/first.mox", overwrite=.true.)
    call models(1)%add_node(MOX_ROOT_GROUP, "Root")
    call models(2)%save_to(folder//"/second.mox", overwrite=.true.)
    call models(2)%add_node(MOX_ROOT_GROUP, "Root")
    deallocate (models)
  end subroutine

  subroutine expect_overwritable(path)
    character(*), intent(in) :: path
    type(mox_model) :: model

    call model%save_to(path, stat=stat, errmsg=sentence)
    call expect_failure(MOX_FILE_OPEN, "File exists.")
  end subroutine

  subroutine fail_without_stat()
    type(mox_model) :: model
    character(100) :: unused

    call model%add_node(MOX_ROOT_GROUP, "Root", errmsg=unused)
  end subroutine

  subroutine assign_used_model()
    type(mox_model) :: model
    type(mox_model) :: other

    call model%save_to("")
    other = model
  end subroutine

end module

program binding

  use binding_tests, only: assign_used_model, fail_without_stat, test_all

  implicit none

  character(4096) :: what

  call get_command_argument(1, what)
  select case (what)
  case ("fail")
    call fail_without_stat()
  case ("assign")
    call assign_used_model()
  case default
    call test_all(trim(what))
  end select

end program
