! A wave on a square membrane, by an explicit method, on a domain that is divided among ranks:
!
!   mpirun -np 4 mpi_02_wave wave.moxs
!   mox join wave.moxs wave.mox
!
! Each rank has a block of the elements. Nodes between blocks belong to all ranks around them. A node's acceleration
! comes from the elements around it, so that a rank also needs the displacements one layer beyond its own nodes: those
! of its neighbours, the ghost layer. In an array (0:nodes + 1) that is what is beyond 1:nodes.
!
!      rank 0         rank 1
!   . o---o---o     o---o---o .        o  a node of the rank: the ones in the middle are shared
!   . |   |   |.   .|   |   | .        .  a place of the ghost layer
!   . o---o---o     o---o---o .
!
! All ranks that share a node compute it from the same numbers in the same order. So the result does not depend on how
! many ranks there are, down to the last bit.
module membrane

  use, intrinsic :: iso_fortran_env, only: int32, real64
  use mpi_f08
  use moxwriter
  use moxwriter_mpi

  implicit none
  private
  public :: run

  integer, parameter :: elements_per_side = 48
  integer, parameter :: steps = 60
  integer, parameter :: steps_between_results = 12
  real(real64), parameter :: size_of_element = 1.0_real64/elements_per_side
  real(real64), parameter :: time_step = 0.5_real64*size_of_element

  !> A rank's place among all, and who is beside it; MPI_PROC_NULL beyond the domain.
  type :: neighbours
    type(MPI_Comm) :: comm
    integer :: sides(2) = 0
    integer :: place(2) = 0
    integer :: left = MPI_PROC_NULL
    integer :: right = MPI_PROC_NULL
    integer :: below = MPI_PROC_NULL
    integer :: above = MPI_PROC_NULL
  end type

  type(neighbours) :: near
  !> Elements before the rank's own, and how many these are, in both directions.
  integer :: first(2)
  integer :: elements(2)
  !> Displacements, one step after the other; the outermost places are the ghost layer.
  real(real64), allocatable :: before(:, :), now(:, :), next(:, :)

contains

  subroutine run(path)
    character(*), intent(in) :: path

    type(mox_partitioned_model) :: model
    integer(int32) :: shape
    integer :: number

    call find_neighbours()
    call start()
    ! What fails on a rank ends the program with its sentence: `stat` would tell all ranks.
    call model%create(near%comm, path, ranks_per_file=2, overwrite=.true.)
    call add_mesh(model, shape)
    do number = 0, steps
      if (mod(number, steps_between_results) == 0) then
        call add_result(model, shape, number)
        call model%step()
      end if
      call advance()
    end do
    call model%close()
    call MPI_Comm_free(near%comm)
  end subroutine

  subroutine find_neighbours()
    integer :: ranks, rank

    call MPI_Comm_size(MPI_COMM_WORLD, ranks)
    call MPI_Dims_create(ranks, 2, near%sides)
    call MPI_Cart_create(MPI_COMM_WORLD, 2, near%sides, [.false., .false.], .false., near%comm)
    call MPI_Comm_rank(near%comm, rank)
    call MPI_Cart_coords(near%comm, rank, 2, near%place)
    call MPI_Cart_shift(near%comm, 0, 1, near%left, near%right)
    call MPI_Cart_shift(near%comm, 1, 1, near%below, near%above)
    first = elements_per_side*near%place/near%sides
    elements = elements_per_side*(near%place + 1)/near%sides - first
  end subroutine

  subroutine start()
    integer :: column, row
    real(real64) :: x, y

    allocate (before(0:elements(1) + 2, 0:elements(2) + 2))
    before = 0
    now = before
    next = before
    do row = 1, elements(2) + 1
      do column = 1, elements(1) + 1
        x = (first(1) + column - 1)*size_of_element - 0.4_real64
        y = (first(2) + row - 1)*size_of_element - 0.5_real64
        if (.not. is_at_edge(column, row)) now(column, row) = 0.1_real64*exp(-80*(x*x + y*y))
      end do
    end do
    call exchange(now)
    before = now
  end subroutine

  !> The membrane is held at its edge.
  logical function is_at_edge(column, row)
    integer, intent(in) :: column, row

    integer :: node(2)

    node = first + [column, row] - 1
    is_at_edge = any(node == 0 .or. node == elements_per_side)
  end function

  !> Gets the ghost layer from the neighbours: first from the sides, then, with what came from there, from above and
  !! below, so that the corners are right, too. Neighbours share their outermost nodes; what they send is the layer
  !! behind these.
  subroutine exchange(values)
    real(real64), intent(inout) :: values(0:, 0:)

    integer :: last(2)

    last = ubound(values)
    call trade(values(2, :), values(0, :), near%left, values(last(1) - 2, :), values(last(1), :), near%right)
    call trade(values(:, 2), values(:, 0), near%below, values(:, last(2) - 2), values(:, last(2)), near%above)
  end subroutine

  subroutine trade(to_lower, from_lower, lower, to_upper, from_upper, upper)
    real(real64), intent(in) :: to_lower(:), to_upper(:)
    real(real64), intent(inout) :: from_lower(:), from_upper(:)
    integer, intent(in) :: lower, upper

    ! Without gaps in memory, as MPI takes them.
    real(real64) :: sent(size(to_lower)), received(size(to_lower))

    sent = to_lower
    received = from_upper
    call MPI_Sendrecv(sent, size(sent), MPI_DOUBLE_PRECISION, lower, 0, received, size(received), &
                      MPI_DOUBLE_PRECISION, upper, 0, near%comm, MPI_STATUS_IGNORE)
    from_upper = received
    sent = to_upper
    received = from_lower
    call MPI_Sendrecv(sent, size(sent), MPI_DOUBLE_PRECISION, upper, 1, received, size(received), &
                      MPI_DOUBLE_PRECISION, lower, 1, near%comm, MPI_STATUS_IGNORE)
    from_lower = received
  end subroutine

  subroutine add_mesh(model, shape)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(out) :: shape

    real(real64) :: coordinates(3, elements(1) + 1, elements(2) + 1)
    integer(int32) :: node_ids(elements(1) + 1, elements(2) + 1)
    integer(int32) :: element_ids(elements(1), elements(2))
    integer(int32) :: connectivity(4, elements(1), elements(2))
    integer :: column, row, corner, width

    width = elements(1) + 1
    do row = 1, elements(2) + 1
      do column = 1, elements(1) + 1
        coordinates(:, column, row) = [(first(1) + column - 1)*size_of_element, &
                                       (first(2) + row - 1)*size_of_element, 0.0_real64]
        node_ids(column, row) = (first(2) + row - 1)*(elements_per_side + 1) + first(1) + column
      end do
    end do
    do row = 1, elements(2)
      do column = 1, elements(1)
        ! Rows of the coordinates are counted from 0.
        corner = (row - 1)*width + column - 1
        connectivity(:, column, row) = [corner, corner + 1, corner + width + 1, corner + width]
        element_ids(column, row) = (first(2) + row - 1)*elements_per_side + first(1) + column
      end do
    end do
    call model%add_node(MOX_ROOT_GROUP, "Wave")
    call model%add_node(MOX_SHAPE, "Membrane", id=shape)
    call model%add_array(MOX_COORDINATES, reshape(coordinates, [3, size(node_ids)]), [shape])
    call model%add_array(MOX_NODE_IDS, reshape(node_ids, [size(node_ids)]), [shape])
    call model%add_array(MOX_ELEMENT_IDS, reshape(element_ids, [size(element_ids)]), [shape])
    call model%add_array(MOX_CONNECTIVITY2, reshape(connectivity, [size(connectivity)]), [shape])
    call model%add_array(MOX_POLYLENGTH2, spread(4_int32, 1, size(element_ids)), [shape])
  end subroutine

  subroutine add_result(model, shape, number)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(in) :: shape
    integer, intent(in) :: number

    type(mox_attributes) :: time
    character(16) :: step
    real(real64) :: displacement(3, (elements(1) + 1)*(elements(2) + 1))
    real(real64) :: tilt(elements(1), elements(2))

    write (step, "(a, i0)") "Step ", number
    call time%set("StepNumber", number + 1)
    call time%set("Time", number*time_step)
    displacement = 0
    displacement(3, :) = reshape(now(1:elements(1) + 1, 1:elements(2) + 1), [size(displacement, 2)])
    tilt = (now(2:elements(1) + 1, 1:elements(2)) - now(1:elements(1), 1:elements(2)))/size_of_element
    call model%add_array(MOX_DISPLACEMENT, displacement, [shape], step=step, step_attributes=time)
    call model%add_array(MOX_ELEMENT_SCALAR, reshape(tilt, [size(tilt)]), [shape], name="Tilt", step=step, &
                         step_attributes=time)
  end subroutine

  !> Central differences; bilinear elements with their mass at the nodes.
  subroutine advance()
    real(real64), parameter :: factor = time_step*time_step/(size_of_element*size_of_element)
    real(real64) :: around, force
    real(real64), allocatable :: unused(:, :)
    integer :: column, row, dx, dy

    do row = 1, elements(2) + 1
      do column = 1, elements(1) + 1
        around = 0
        do dy = -1, 1
          do dx = -1, 1
            around = around + now(column + dx, row + dy)
          end do
        end do
        force = (around - 9*now(column, row))/3
        next(column, row) = 2*now(column, row) - before(column, row) + factor*force
        if (is_at_edge(column, row)) next(column, row) = 0
      end do
    end do
    call move_alloc(before, unused)
    call move_alloc(now, before)
    call move_alloc(next, now)
    call move_alloc(unused, next)
    call exchange(now)
  end subroutine

end module

program wave

  use mpi_f08
  use membrane, only: run

  implicit none

  character(1024) :: path

  path = "wave.moxs"
  if (command_argument_count() > 0) call get_command_argument(1, path)
  call MPI_Init()
  call run(trim(path))
  call MPI_Finalize()

end program
