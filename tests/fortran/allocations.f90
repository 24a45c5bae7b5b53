! Calls of every kind, with each allocation failing in turn: each has to end in a status, and to lose no memory.
module allocation_tests

  use, intrinsic :: iso_c_binding, only: c_int
  use, intrinsic :: iso_fortran_env, only: error_unit, int32, int64, real64
  use moxwriter

  implicit none
  private

  public :: test

  interface
    subroutine fail_allocations(ordinal, is_repeated) bind(c)
      import :: c_int
      integer(c_int), value :: ordinal, is_repeated
    end subroutine
    function end_failing() result(struck) bind(c)
      import :: c_int
      integer(c_int) :: struck
    end function
    function live_allocations() result(count) bind(c)
      import :: c_int
      integer(c_int) :: count
    end function
  end interface

  character(*), parameter :: long = "a text that does not fit into a short string"
  character(60) :: names(2) = [character(60) :: "Root", long]
  character(60) :: paths(2) = [character(60) :: "/Root/"//long, "/Root/a group with a long name/"]
  real(real64) :: values(4, 10) = 1
  integer :: first_failure
  character(200) :: first_sentence

contains

  subroutine note(stat, sentence)
    integer, intent(in) :: stat
    character(*), intent(in) :: sentence

    if (stat == MOX_OK .or. first_failure /= MOX_OK) return
    first_failure = stat
    first_sentence = sentence
  end subroutine

  subroutine run(path, model, attributes, properties, steps)
    character(*), intent(in) :: path
    type(mox_model), intent(inout) :: model
    type(mox_attributes), intent(inout) :: attributes
    type(mox_properties), intent(inout) :: properties
    type(mox_steps), intent(inout) :: steps
    integer(int32) :: shape, id, ids(2)
    integer :: stat
    character(200) :: sentence

    first_failure = MOX_OK
    sentence = ""
    shape = 3
    call attributes%set(long, 1.0, stat, sentence)
    call note(stat, sentence)
    call attributes%set(long, 1.0_real64, stat, sentence)
    call note(stat, sentence)
    call attributes%set(long//"3", 1, stat, sentence)
    call note(stat, sentence)
    call attributes%set(long//"4", 1_int64, stat, sentence)
    call note(stat, sentence)
    call attributes%set_unsigned(long//"5", 1_int64, stat, sentence)
    call note(stat, sentence)
    call attributes%set(long, long, stat, sentence)
    call note(stat, sentence)
    call steps%add(long, attributes, stat, sentence)
    call note(stat, sentence)
    call model%save_to(path, .true., long, long, long, MOX_ENCODER_ZLIB, 2, 1000_int64, .false., stat, sentence)
    call note(stat, sentence)
    call model%add_node(MOX_ROOT_GROUP, "Root", attributes, stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%add_node(MOX_SHAPE, long, stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call properties%set(MOX_SHININESS, 0.5, stat, sentence)
    call note(stat, sentence)
    call properties%set(MOX_SHININESS, long, stat, sentence)
    call note(stat, sentence)
    call properties%clear()
    call properties%set(MOX_TRANSLATION, [1.0, 2.0, 3.0], stat, sentence)
    call note(stat, sentence)
    call model%set_node_data(1_int32, properties, attributes, stat, sentence)
    call note(stat, sentence)
    call model%get_node_id("/Root/a", id, stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%get_node_id_by_names(names, id, stat, sentence)
    call note(stat, sentence)
    call model%set_current_node_id(1_int32, stat, sentence)
    call note(stat, sentence)
    call model%move_to_parent_node(id, stat, sentence)
    call note(stat, sentence)
    call model%add_components(paths, ids, stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%add_component_map(paths, ids=ids, stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%add_array(MOX_DISPLACEMENT, values(1:3, :), [shape], long, steps=steps, attributes=attributes, &
                         stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%add_array(MOX_RESULT10, values(4, :), [shape], long, step="1", step_attributes=attributes, &
                         stat=stat, errmsg=sentence)
    call note(stat, sentence)
    call model%close(stat, sentence)
    call note(stat, sentence)
    call model%save_to_wide(mox_wide_"", stat=stat, errmsg=sentence)
    call note(stat, sentence)
  end subroutine

  ! Lets the calls fail, and the variables go out of scope when there is memory again: what compilers make of that takes
  ! some, and does not look whether it got it.
  logical function strikes(path, ordinal, is_repeated)
    character(*), intent(in) :: path
    integer, intent(in) :: ordinal
    integer, intent(in) :: is_repeated
    type(mox_model) :: model
    type(mox_attributes) :: attributes
    type(mox_properties) :: properties
    type(mox_steps) :: steps

    call fail_allocations(ordinal, is_repeated)
    call run(path, model, attributes, properties, steps)
    strikes = end_failing() /= 0
  end function

  ! \return whether the calls got as far as the allocation
  logical function fails_well(path, ordinal, is_repeated)
    character(*), intent(in) :: path
    integer, intent(in) :: ordinal
    integer, intent(in) :: is_repeated
    integer :: before
    logical :: is_documented

    before = live_allocations()
    fails_well = strikes(path, ordinal, is_repeated)
    ! Opening a file takes memory of the system's, which says so.
    is_documented = any(first_failure == [MOX_OK, MOX_MEMORY]) .or. &
                    (first_failure == MOX_MISCELLANEOUS .and. index(first_sentence, "Cannot allocate memory") > 0)
    if (.not. is_documented) then
      write (error_unit, "(a, i0, a, i0, 2a)") "allocation ", ordinal, ": status ", first_failure, ", ", &
        trim(first_sentence)
      error stop
    end if
    if (live_allocations() /= before) then
      ! What is made once and kept is not made again.
      before = live_allocations()
      fails_well = strikes(path, ordinal, is_repeated)
    end if
    if (live_allocations() /= before) then
      write (error_unit, "(a, i0, a)") "allocation ", ordinal, ": memory is lost"
      error stop
    end if
  end function

  subroutine test(path)
    character(*), intent(in) :: path
    integer :: is_repeated
    integer :: ordinal

    ! The library makes some objects at their first use and keeps them.
    if (strikes(path, 0, 0)) error stop "an allocation failed that should not"
    do is_repeated = 0, 1
      ordinal = 1
      do while (fails_well(path, ordinal, is_repeated))
        ordinal = ordinal + 1
      end do
      if (ordinal < 300 .or. first_failure /= MOX_OK) error stop "the calls need more memory than that"
    end do
  end subroutine

end module

program allocations

  use allocation_tests, only: test

  implicit none

  character(1000) :: path

  call get_command_argument(1, path)
  call test(trim(path))

end program
