! The host that the start page shows: two parts side by side in a group that is moved, a block of hexahedra and a cap of
! tetrahedra, with displacements of nodes and stresses of elements in three steps, a material and a set of nodes.
! 07_two_parts.cpp writes the same.
program two_parts
  use, intrinsic :: iso_fortran_env, only: int32, real64
  use moxwriter
  implicit none

  real(real64), parameter :: block_nodes(3, 12) = reshape( &
    [real(real64) :: 0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, &
                     0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1, &
                     0, 0, 2, 1, 0, 2, 1, 1, 2, 0, 1, 2], [3, 12])
  integer, parameter :: hexahedra(8, 2) = reshape( &
    [1, 2, 3, 4, 5, 6, 7, 8, 5, 6, 7, 8, 9, 10, 11, 12], [8, 2])
  real(real64), parameter :: cap_nodes(3, 5) = reshape( &
    [real(real64) :: 0, 0, 2, 1, 0, 2, 1, 1, 2, 0, 1, 2, 0.5, 0.5, 3], [3, 5])
  integer, parameter :: tetrahedra(4, 2) = reshape([1, 2, 3, 5, 1, 3, 4, 5], [4, 2])

  type(mox_model) :: model
  integer(int32) :: group
  character(1000) :: path

  path = "two_parts.mox"
  if (command_argument_count() > 0) call get_command_argument(1, path)
  ! Without stat, what fails ends the program and says why.
  call model%save_to(path, overwrite=.true.)
  call model%add_node(MOX_ROOT_GROUP, "Two parts")
  call add_moved_group()
  call add_block()
  call add_cap()
  call model%close()

contains

  subroutine add_moved_group()
    type(mox_properties) :: transform

    call model%add_node(MOX_GROUP, "Moved", id=group)
    call transform%set(MOX_TRANSLATION, [2.0, 0.0, 0.0])
    ! An axis and radians.
    call transform%set(MOX_ROTATION, [0.0, 0.0, 1.0, 0.5])
    call model%set_node_data(group, transform)
  end subroutine

  ! A node goes below the current one, which is the one that was added last: shapes that are to stand beside each other
  ! make their group current first.
  subroutine add_shape(name, shape)
    character(*), intent(in) :: name
    integer(int32), intent(out) :: shape

    call model%set_current_node_id(group)
    call model%add_node(MOX_SHAPE, name, id=shape)
  end subroutine

  subroutine add_block()
    integer(int32) :: shape
    type(mox_attributes) :: is_set

    call add_shape("Block", shape)
    call add_mesh(shape, block_nodes, hexahedra)
    call add_results(shape, block_nodes, size(hexahedra, 2))
    ! A set is 1 for the nodes that are in it, and 0 for the others.
    call is_set%set("Category", "NodeSet")
    call model%add_array(MOX_NODE_SCALAR, [1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0], [shape], &
                         name="Node Set Clamped", attributes=is_set)
  end subroutine

  subroutine add_cap()
    integer(int32) :: shape
    type(mox_properties) :: material

    call add_shape("Cap", shape)
    call add_mesh(shape, cap_nodes, tetrahedra)
    call add_results(shape, cap_nodes, size(tetrahedra, 2))
    call material%set(MOX_DIFFUSE_COLOR, [0.8, 0.1, 0.1])
    call material%set(MOX_TRANSPARENCY, 0.25)
    call model%set_node_data(shape, material)
  end subroutine

  subroutine add_mesh(shape, nodes, elements)
    integer(int32), intent(in) :: shape
    real(real64), intent(in) :: nodes(:, :)
    integer, intent(in) :: elements(:, :)
    integer :: element

    call model%add_array(MOX_COORDINATES, nodes, [shape])
    ! Connectivity3 is that of solids: rows of the coordinates, counted from 0.
    call model%add_array(MOX_CONNECTIVITY3, reshape(elements - 1, [size(elements)]), [shape])
    call model%add_array(MOX_POLYLENGTH3, [(size(elements, 1), element=1, size(elements, 2))], [shape])
  end subroutine

  ! What a solver would compute: the parts sink, and are pressed together.
  subroutine add_results(shape, nodes, elements)
    integer(int32), intent(in) :: shape
    real(real64), intent(in) :: nodes(:, :)
    integer, intent(in) :: elements
    ! A stress is xx, yy, zz, xy, yz, zx.
    real(real64) :: displacement(3, size(nodes, 2)), stress(6, elements)
    type(mox_attributes) :: attributes
    character(20) :: step
    integer :: number

    displacement = 0
    stress = 0
    do number = 1, 3
      write (step, "(a, i0)") "Step ", number
      call attributes%set("StepNumber", number)
      call attributes%set("Time", 0.5_real64*number)
      displacement(3, :) = -0.01_real64*number*nodes(3, :)
      stress(3, :) = -2.5_real64*number
      call model%add_array(MOX_DISPLACEMENT, displacement, [shape], step=step, step_attributes=attributes)
      call model%add_array(MOX_ELEMENT_TENSOR, stress, [shape], name="Stress", step=step, step_attributes=attributes)
    end do
  end subroutine
end program
