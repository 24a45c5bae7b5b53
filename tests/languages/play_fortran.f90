! Plays sequences through the module for Fortran. README.md says what they look like.
module player

  use, intrinsic :: iso_fortran_env, only: int8, int32, int64, real32, real64, error_unit, output_unit
  use moxwriter

  implicit none
  private

  public :: demand, play

  ! Texts of one line, filled with blanks to the same length.
  integer, parameter :: longest_text = 1024

  type :: named_array
    character(8) :: element = "float32"
    integer :: rows = 0
    integer :: columns = 1
    integer :: row_step = 1
    integer :: column_step = 1
    integer :: first = 1
    character(:), allocatable :: bytes
  end type

  type :: slot
    type(mox_model), allocatable :: model
  end type

  type :: save_options
    logical :: overwrite = .false.
    character(:), allocatable :: text1, text2, text3
    integer, allocatable :: threads
    integer(int64), allocatable :: block_size
  end type

  character(:), allocatable :: line
  integer :: position = 1

  type(slot), target, save :: slots(0:2)
  type(mox_model), pointer :: model => null()

  type(save_options), save :: options
  type(mox_attributes), target, save :: attributes
  type(mox_properties), target, save :: properties
  type(mox_steps), target, save :: steps
  type(named_array), save :: array

  integer(int64) :: sequence = 0
  integer :: calls = 0

  character(4000) :: sentence
  integer(int64) :: values(64)
  integer :: value_count

contains

  subroutine demand(holds, what)
    logical, intent(in) :: holds
    character(*), intent(in) :: what

    if (holds) return
    write (error_unit, "(a)") what
    error stop
  end subroutine

  ! Plays one line.
  subroutine play(text)
    character(*), intent(in) :: text
    character(:), allocatable :: first

    line = text
    position = 1
    first = next_word()
    if (index("0123456789", first(1:1)) > 0) then
      call make_call(iachar(first) - iachar("0"), next_word())
    else
      call prepare(first)
    end if
  end subroutine

  ! The words of a line

  function next_word() result(word)
    character(:), allocatable :: word
    integer :: length

    call demand(position <= len(line), "a line is too short")
    length = index(line(position:), " ") - 1
    if (length < 0) length = len(line) - position + 1
    word = line(position:position + length - 1)
    position = position + length + 1
  end function

  function next_number() result(number)
    integer(int64) :: number
    character(:), allocatable :: word

    word = next_word()
    read (word, *) number
  end function

  integer function next_count()
    next_count = int(next_number())
  end function

  function next_real32() result(value)
    real(real32) :: value
    character(:), allocatable :: word
    integer(int32) :: bits

    word = next_word()
    read (word, "(z8)") bits
    value = transfer(bits, value)
  end function

  function next_real64() result(value)
    real(real64) :: value
    character(:), allocatable :: word
    integer(int64) :: bits

    word = next_word()
    read (word, "(z16)") bits
    value = transfer(bits, value)
  end function

  ! Not allocated for none.
  subroutine next_text(text)
    character(:), allocatable, intent(out) :: text
    character(:), allocatable :: word
    integer :: byte
    integer :: place

    word = next_word()
    if (word == "-") return
    allocate (character(len(word)/2) :: text)
    do place = 1, len(text)
      read (word(2*place:2*place + 1), "(z2)") byte
      text(place:place) = achar(byte)
    end do
  end subroutine

  subroutine next_texts(texts)
    character(longest_text), allocatable, intent(out) :: texts(:)
    character(:), allocatable :: text
    integer :: place

    allocate (texts(next_count()))
    do place = 1, size(texts)
      call next_text(text)
      call demand(len(text) <= longest_text, "a text is too long")
      texts(place) = text
    end do
  end subroutine

  logical function next_is(word)
    character(*), intent(in) :: word

    next_is = next_word() == word
  end function

  ! Lines that make no call

  subroutine prepare(what)
    character(*), intent(in) :: what

    select case (what)
    case ("sequence")
      call begin_sequence()
    case ("options")
      options%overwrite = next_number() /= 0
      call next_text(options%text1)
      call next_text(options%text2)
      call next_text(options%text3)
      options%threads = int(next_number())
      options%block_size = next_number()
    case ("attributes")
      call read_attributes(attributes)
    case ("properties")
      call read_properties()
    case ("steps")
      call read_steps()
    case default
      call demand(what == "array", "no such line")
      call read_array()
    end select
  end subroutine

  subroutine begin_sequence()
    sequence = next_number()
    calls = 0
    options = save_options()
    call attributes%clear()
    call properties%clear()
    call steps%clear()
    array = named_array(bytes="")
  end subroutine

  subroutine read_attributes(to)
    type(mox_attributes), intent(inout) :: to
    character(:), allocatable :: name
    character(:), allocatable :: text
    character(:), allocatable :: type
    integer :: left

    call to%clear()
    do left = next_count(), 1, -1
      call next_text(name)
      type = next_word()
      select case (type)
      case ("float")
        call to%set(name, next_real32())
      case ("double")
        call to%set(name, next_real64())
      case ("int")
        call to%set(name, int(next_number(), int32))
      case ("unsigned")
        call to%set_unsigned(name, next_number())
      case ("long")
        call to%set(name, next_number())
      case default
        call next_text(text)
        call to%set(name, text)
      end select
    end do
  end subroutine

  subroutine read_properties()
    character(:), allocatable :: form
    character(:), allocatable :: text
    real(real32), allocatable :: reals(:)
    integer(int32), allocatable :: ints(:)
    integer :: type
    integer :: left
    integer :: place

    call properties%clear()
    do left = next_count(), 1, -1
      type = next_count()
      form = next_word()
      select case (form)
      case ("float")
        call properties%set(type, next_real32())
      case ("double")
        call properties%set(type, next_real64())
      case ("int")
        call properties%set(type, int(next_number(), int32))
      case ("bool")
        call properties%set(type, next_number() /= 0)
      case ("floats")
        reals = [(0.0_real32, place=1, next_count())]
        do place = 1, size(reals)
          reals(place) = next_real32()
        end do
        call properties%set(type, reals)
      case ("ints")
        ints = [(0_int32, place=1, next_count())]
        do place = 1, size(ints)
          ints(place) = int(next_number(), int32)
        end do
        call properties%set(type, ints)
      case default
        call next_text(text)
        call properties%set(type, text)
      end select
    end do
  end subroutine

  subroutine read_steps()
    type(mox_attributes) :: of_step
    character(:), allocatable :: name
    integer :: left

    call steps%clear()
    do left = next_count(), 1, -1
      call next_text(name)
      call read_attributes(of_step)
      call steps%add(name, of_step)
    end do
  end subroutine

  subroutine read_array()
    integer :: width

    array%element = next_word()
    width = merge(8, 4, index(array%element, "64") > 0)
    array%rows = next_count()
    array%columns = next_count()
    array%row_step = next_count()/width
    array%column_step = next_count()/width
    array%first = next_count()/width + 1
    call next_text(array%bytes)
  end subroutine

  ! Calls

  subroutine make_call(number, call)
    integer, intent(in) :: number
    character(*), intent(in) :: call
    integer :: status
    integer :: place

    calls = calls + 1
    value_count = 0
    sentence = ""
    call run(slots(number), call, status)
    write (output_unit, "(i0, 1x, i0, 1x, i0, 1x, a, 1x, i0)", advance="no") sequence, calls, number, call, status
    if (status == MOX_OK) then
      do place = 1, value_count
        write (output_unit, "(a, i0)", advance="no") " ", values(place)
      end do
    else
      write (output_unit, "(a)", advance="no") " "
      call print_sentence()
    end if
    write (output_unit, "()")
  end subroutine

  subroutine print_sentence()
    character, parameter :: digits(0:15) = [character :: "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", &
                                            "a", "b", "c", "d", "e", "f"]
    integer :: place
    integer :: byte

    do place = 1, len_trim(sentence)
      byte = iachar(sentence(place:place))
      if (byte >= 32 .and. byte <= 126 .and. sentence(place:place) /= "\") then
        write (output_unit, "(a)", advance="no") sentence(place:place)
      else
        write (output_unit, "(3a)", advance="no") "\x", digits(byte/16), digits(mod(byte, 16))
      end if
    end do
  end subroutine

  subroutine run(of, call, status)
    type(slot), target, intent(inout) :: of
    character(*), intent(in) :: call
    integer, intent(out) :: status

    status = MOX_OK
    if (call == "new") allocate (of%model)
    model => of%model
    select case (call)
    case ("new")
    case ("save_to")
      call save(.false., status)
    case ("save_to_wide")
      call save(.true., status)
    case ("add_node")
      call add_node(status)
    case ("set_node_data")
      call set_node_data(status)
    case ("get_node_id")
      call get_node_id(status)
    case ("get_node_id_by_names")
      call get_node_id_by_names(status)
    case ("set_current_node_id")
      call model%set_current_node_id(int(next_number(), int32), status, sentence)
    case ("move_to_parent_node")
      call move_to_parent_node(status)
    case ("add_components")
      call add_components(status)
    case ("add_component_map")
      call add_component_map(status)
    case ("add_array")
      call add_array(status)
    case ("close")
      call model%close(status, sentence)
    case default
      call demand(call == "destroy", "no such call")
      call model%close(status, sentence)
      deallocate (of%model)
    end select
  end subroutine

  subroutine keep(id)
    integer(int32), intent(in) :: id

    value_count = value_count + 1
    values(value_count) = id
  end subroutine

  subroutine next_attributes(given)
    type(mox_attributes), pointer, intent(out) :: given

    given => null()
    if (next_is("given")) given => attributes
  end subroutine

  subroutine save(is_wide, status)
    logical, intent(in) :: is_wide
    integer, intent(out) :: status
    character(:), allocatable :: path
    type(save_options) :: given
    logical, allocatable :: overwrite

    call next_text(path)
    if (next_is("given")) then
      given = options
      overwrite = given%overwrite
    end if
    if (is_wide) then
      call model%save_to_wide(widened(path), overwrite, given%text1, given%text2, given%text3, &
                              threads=given%threads, block_size=given%block_size, stat=status, errmsg=sentence)
    else
      call model%save_to(path, overwrite, given%text1, given%text2, given%text3, threads=given%threads, &
                         block_size=given%block_size, stat=status, errmsg=sentence)
    end if
  end subroutine

  function widened(text) result(wide)
    character(*), intent(in) :: text
    character(len(text), kind=mox_wide) :: wide
    integer :: place

    do place = 1, len(text)
      wide(place:place) = char(iachar(text(place:place)), kind=mox_wide)
    end do
  end function

  subroutine add_node(status)
    integer, intent(out) :: status
    integer :: type
    character(:), allocatable :: name
    type(mox_attributes), pointer :: given
    integer(int32) :: id

    type = next_count()
    call next_text(name)
    call next_attributes(given)
    call model%add_node(type, name, given, id, status, sentence)
    call keep(id)
  end subroutine

  subroutine set_node_data(status)
    integer, intent(out) :: status
    integer(int32) :: id
    type(mox_properties), pointer :: given_properties
    type(mox_attributes), pointer :: given_attributes

    id = int(next_number(), int32)
    given_properties => null()
    if (next_is("given")) given_properties => properties
    call next_attributes(given_attributes)
    call model%set_node_data(id, given_properties, given_attributes, status, sentence)
  end subroutine

  subroutine get_node_id(status)
    integer, intent(out) :: status
    character(:), allocatable :: path
    character(:), allocatable :: separator
    integer(int32) :: id

    call next_text(path)
    call next_text(separator)
    call model%get_node_id(path, id, separator, status, sentence)
    call keep(id)
  end subroutine

  subroutine get_node_id_by_names(status)
    integer, intent(out) :: status
    character(longest_text), allocatable :: names(:)
    integer(int32) :: id

    call next_texts(names)
    call model%get_node_id_by_names(names, id, status, sentence)
    call keep(id)
  end subroutine

  subroutine move_to_parent_node(status)
    integer, intent(out) :: status
    integer(int32) :: parent

    call model%move_to_parent_node(parent, status, sentence)
    call keep(parent)
  end subroutine

  subroutine add_components(status)
    integer, intent(out) :: status
    character(:), allocatable :: separator
    character(longest_text), allocatable :: paths(:)
    integer(int32), allocatable :: ids(:)
    integer :: place

    call next_text(separator)
    call next_texts(paths)
    allocate (ids(size(paths)))
    call model%add_components(paths, ids, separator, status, sentence)
    call keep(size(ids))
    do place = 1, size(ids)
      call keep(ids(place))
    end do
  end subroutine

  subroutine add_component_map(status)
    integer, intent(out) :: status
    character(:), allocatable :: separator
    character(longest_text), allocatable :: paths(:)
    integer(int32), allocatable :: ids(:)
    integer :: id_count
    integer :: place

    call next_text(separator)
    call next_texts(paths)
    allocate (ids(size(paths)))
    call model%add_component_map(paths, ids=ids, id_count=id_count, separator=separator, stat=status, errmsg=sentence)
    call keep(id_count)
    do place = 1, id_count
      call keep(ids(place))
    end do
  end subroutine

  subroutine add_array(status)
    integer, intent(out) :: status
    character(:), allocatable :: name
    type(mox_steps), pointer :: given_steps
    type(mox_attributes), pointer :: given_attributes
    integer(int32), allocatable :: ids(:)
    integer :: type
    integer :: place

    call next_text(name)
    type = next_count()
    given_steps => null()
    if (next_is("given")) given_steps => steps
    call next_attributes(given_attributes)
    allocate (ids(next_count()))
    do place = 1, size(ids)
      ids(place) = int(next_number(), int32)
    end do
    select case (array%element)
    case ("float32")
      call add_real32(transfer(array%bytes, [0.0_real32]), array%first, type, ids, name, given_steps, &
                      given_attributes, status, sentence)
    case ("float64")
      call add_real64(transfer(array%bytes, [0.0_real64]), array%first, type, ids, name, given_steps, &
                      given_attributes, status, sentence)
    case ("int32")
      call add_int32(transfer(array%bytes, [0_int32]), array%first, type, ids, name, given_steps, given_attributes, &
                     status, sentence)
    case ("uint32")
      call add_int64(iand(int(transfer(array%bytes, [0_int32]), int64), 4294967295_int64), array%first, type, ids, &
                     name, given_steps, given_attributes, status, sentence)
    case default
      call add_int64(transfer(array%bytes, [0_int64]), array%first, type, ids, name, given_steps, given_attributes, &
                     status, sentence)
    end select
  end subroutine

  subroutine add_real32(memory, first, type, ids, name, steps, attributes, stat, errmsg)
    real(real32), intent(in), target, contiguous :: memory(:)
    integer, intent(in) :: first
    real(real32), pointer :: table(:, :)
    include "play_fortran.inc"
  end subroutine

  subroutine add_real64(memory, first, type, ids, name, steps, attributes, stat, errmsg)
    real(real64), intent(in), target, contiguous :: memory(:)
    integer, intent(in) :: first
    real(real64), pointer :: table(:, :)
    include "play_fortran.inc"
  end subroutine

  subroutine add_int32(memory, first, type, ids, name, steps, attributes, stat, errmsg)
    integer(int32), intent(in), target, contiguous :: memory(:)
    integer, intent(in) :: first
    integer(int32), pointer :: table(:, :)
    include "play_fortran.inc"
  end subroutine

  subroutine add_int64(memory, first, type, ids, name, steps, attributes, stat, errmsg)
    integer(int64), intent(in), target, contiguous :: memory(:)
    integer, intent(in) :: first
    integer(int64), pointer :: table(:, :)
    include "play_fortran.inc"
  end subroutine

end module

program play_fortran

  use player, only: demand, play

  implicit none

  integer :: unit
  integer :: status
  character(4096) :: path
  character(200000) :: line

  call demand(command_argument_count() == 1, "play_fortran SEQUENCES")
  call get_command_argument(1, path)
  open (newunit=unit, file=path, status="old", action="read", iostat=status)
  call demand(status == 0, "the sequences can't be opened")
  do
    read (unit, "(a)", iostat=status) line
    if (status /= 0) exit
    call play(trim(line))
  end do
  call demand(is_iostat_end(status), "the sequences can't be read")

end program
