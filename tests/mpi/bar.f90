! The bar of WrittenPieces.h, by a program of many ranks in Fortran.
!
!   bar_fortran faults                        tells the words below
!   bar_fortran INDEX RANKS_PER_FILE          writes the pieces
!   bar_fortran INDEX RANKS_PER_FILE FAULT    the same, but rank 1 is refused something after the mesh: "width", an
!                                             array; "steps", what doesn't even reach C; "own", by itself
!
! Each rank prints the sentence that it is told in the end, if there is one.
program bar

  use, intrinsic :: iso_fortran_env, only: int32, int64, real32, real64
  use mpi_f08
  use moxwriter
  use moxwriter_mpi

  implicit none

  integer, parameter :: elements = 64
  integer, parameter :: steps = 3
  character(80) :: path, word, fault
  character(200) :: message
  integer :: rank, ranks, ranks_per_file, status

  call get_command_argument(1, path)
  if (command_argument_count() == 1) then
    print "(a)", "width steps own"
    stop
  end if
  call get_command_argument(2, word)
  read (word, *) ranks_per_file
  call get_command_argument(3, fault)
  call MPI_Init()
  call MPI_Comm_rank(MPI_COMM_WORLD, rank)
  call MPI_Comm_size(MPI_COMM_WORLD, ranks)
  call write_bar(status)
  if (status /= MOX_OK) print "(a)", trim(message)
  call MPI_Finalize()
  if (status /= MOX_OK) error stop

contains

  logical function meets(which)
    character(*), intent(in) :: which

    meets = rank == 1 .and. fault == which
  end function

  ! The model is closed, or has told the others, when it goes out of scope.
  subroutine write_bar(stat)
    integer, intent(out) :: stat

    type(mox_partitioned_model) :: model
    integer(int32) :: bar
    integer :: number

    call model%create(MPI_COMM_WORLD, path, ranks_per_file, message_bytes=4096_int64, overwrite=.true., stat=stat, &
                      errmsg=message)
    if (stat == MOX_OK) call add_tree(model, bar, stat)
    if (stat == MOX_OK) call add_mesh(model, bar, stat)
    if (stat /= MOX_OK) return
    if (meets("width")) call model%add_array(MOX_DISPLACEMENT, [1.0, 2.0], [bar], stat=stat, errmsg=message)
    if (meets("steps")) call add_twice(model, bar, stat)
    if (meets("own")) then
      call model%fail("the solver does not converge", stat=stat, errmsg=message)
      call model%step(stat=stat, errmsg=message)
    end if
    do number = 1, steps
      if (stat /= MOX_OK) return
      call add_step(model, bar, number, stat)
    end do
    if (stat == MOX_OK) call model%close(stat=stat, errmsg=message)
  end subroutine

  subroutine add_tree(model, bar, stat)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(out) :: bar
    integer, intent(out) :: stat

    type(mox_attributes) :: about
    type(mox_properties) :: place
    integer(int32) :: group

    call about%set("Solver", "test")
    call place%set(MOX_TRANSLATION, [1.0, 2.0, 3.0])
    call model%add_node(MOX_ROOT_GROUP, "Wave", attributes=about)
    call model%add_node(MOX_GROUP, "Parts", id=group)
    call model%set_node_data(group, place)
    call model%add_node(MOX_SHAPE, "Bar", id=bar, stat=stat, errmsg=message)
  end subroutine

  subroutine add_mesh(model, bar, stat)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(in) :: bar
    integer, intent(out) :: stat

    integer :: nodes(elements/ranks + 1)
    integer :: row

    nodes = my_nodes()
    call model%add_array(MOX_COORDINATES, &
                         reshape([(0.5*nodes(row), 0.0, 1.0, row=1, size(nodes))], [3, size(nodes)]), [bar])
    call model%add_array(MOX_NODE_IDS, nodes + 1, [bar])
    call model%add_array(MOX_CONNECTIVITY1, [(row - 1, row, row=1, size(nodes) - 1)], [bar])
    call model%add_array(MOX_POLYLENGTH1, [(2, row=1, size(nodes) - 1)], [bar], stat=stat, errmsg=message)
  end subroutine

  subroutine add_step(model, bar, number, stat)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(in) :: bar
    integer, intent(in) :: number
    integer, intent(out) :: stat

    type(mox_attributes) :: time
    real(real64) :: displacement(3, elements/ranks + 1)
    real(real64) :: nodes(elements/ranks + 1)
    character(8) :: name

    write (name, "(a, i0)") "Step ", number
    nodes = my_nodes()
    displacement(1, :) = 0
    displacement(2, :) = sin(0.1_real64*nodes + number)
    displacement(3, :) = 1e-3_real64*nodes
    call time%set("StepNumber", number)
    call time%set("Time", 0.5_real32*real(number, real32))
    call model%add_array(MOX_DISPLACEMENT, displacement, [bar], step=name, step_attributes=time, stat=stat, &
                         errmsg=message)
    if (stat == MOX_OK) call model%step(stat=stat, errmsg=message)
  end subroutine

  subroutine add_twice(model, bar, stat)
    type(mox_partitioned_model), intent(inout) :: model
    integer(int32), intent(in) :: bar
    integer, intent(out) :: stat

    type(mox_steps) :: list

    call list%add("Step 1")
    call model%add_array(MOX_NODE_IDS, my_nodes(), [bar], step="Step 1", steps=list, stat=stat, errmsg=message)
  end subroutine

  function my_nodes() result(nodes)
    integer :: nodes(elements/ranks + 1)
    integer :: row

    nodes = [(elements/ranks*rank + row, row=0, elements/ranks)]
  end function

end program
