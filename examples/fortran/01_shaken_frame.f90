! A solver in Fortran that writes as it goes: a steel frame whose ground shakes. Plane frame elements of Euler and Bernoulli,
! consistent masses, Rayleigh damping, Newmark's method with constant average acceleration. What is written is looked at
! where the solver has it: velocities are a section of the state, for which no copy is made.
module frame

  use, intrinsic :: iso_fortran_env, only: int32, real64

  implicit none

  integer, parameter :: storeys = 12
  integer, parameter :: bays = 4
  integer, parameter :: nodes = (storeys + 1)*(bays + 1)
  integer, parameter :: elements = storeys*(2*bays + 1)
  integer, parameter :: unknowns = 3*storeys*(bays + 1)

  ! Metres, seconds, kilograms, Newtons.
  real(real64), parameter :: height = 3
  real(real64), parameter :: width = 6
  real(real64), parameter :: young = 210e9_real64
  real(real64), parameter :: area = 0.0149_real64
  real(real64), parameter :: inertia = 2.517e-4_real64
  ! Of the steel, and of the floor that a beam carries.
  real(real64), parameter :: column_mass = 117
  real(real64), parameter :: beam_mass = 4000

  real(real64), parameter :: time_step = 0.02_real64
  integer, parameter :: steps = 400
  integer, parameter :: steps_per_result = 8

  real(real64) :: coordinates(3, nodes)
  integer(int32) :: ends(2, elements)

  ! Translations along and rotations about x, y and z, as a viewer takes them; a plane frame has three of them.
  integer, parameter :: in_plane(3) = [1, 2, 6]
  real(real64) :: displacement(6, nodes) = 0
  real(real64) :: velocity(6, nodes) = 0

contains

  integer function node_at(storey, column)
    integer, intent(in) :: storey, column

    node_at = storey*(bays + 1) + column + 1
  end function

  subroutine make_mesh()
    integer :: storey, column, element

    element = 0
    do storey = 0, storeys
      do column = 0, bays
        coordinates(:, node_at(storey, column)) = [column*width, storey*height, 0.0_real64]
        if (storey == 0) cycle
        element = element + 1
        ends(:, element) = [node_at(storey - 1, column), node_at(storey, column)]
        if (column == 0) cycle
        element = element + 1
        ends(:, element) = [node_at(storey, column - 1), node_at(storey, column)]
      end do
    end do
  end subroutine

  ! Stiffness and mass of an element, in the axes of the frame.
  subroutine make_element(element, stiffness, mass)
    integer, intent(in) :: element
    real(real64), intent(out) :: stiffness(6, 6), mass(6, 6)
    real(real64) :: along(3), length, turn(6, 6), k, m

    along = coordinates(:, ends(2, element)) - coordinates(:, ends(1, element))
    length = norm2(along)
    along = along/length
    turn = 0
    turn(1, 1:2) = along(1:2)
    turn(2, 1:2) = [-along(2), along(1)]
    turn(3, 3) = 1
    turn(4:6, 4:6) = turn(1:3, 1:3)

    stiffness = 0
    stiffness(1, 1) = young*area/length
    stiffness(4, 4) = stiffness(1, 1)
    stiffness(1, 4) = -stiffness(1, 1)
    stiffness(4, 1) = -stiffness(1, 1)
    k = young*inertia/length**3
    stiffness([2, 3, 5, 6], [2, 3, 5, 6]) = k*reshape( &
      [12.0_real64, 6*length, -12.0_real64, 6*length, 6*length, 4*length**2, -6*length, 2*length**2, &
       -12.0_real64, -6*length, 12.0_real64, -6*length, 6*length, 2*length**2, -6*length, 4*length**2], [4, 4])

    mass = 0
    m = merge(column_mass, beam_mass, abs(along(2)) > 0.5_real64)*length
    mass(1, 1) = m/3
    mass(4, 4) = m/3
    mass(1, 4) = m/6
    mass(4, 1) = m/6
    mass([2, 3, 5, 6], [2, 3, 5, 6]) = m/420*reshape( &
      [156.0_real64, 22*length, 54.0_real64, -13*length, 22*length, 4*length**2, 13*length, -3*length**2, &
       54.0_real64, 13*length, 156.0_real64, -22*length, -13*length, -3*length**2, -22*length, 4*length**2], [4, 4])

    stiffness = matmul(transpose(turn), matmul(stiffness, turn))
    mass = matmul(transpose(turn), matmul(mass, turn))
  end subroutine

  ! The nodes of the ground, which come first, have no unknowns.
  subroutine assemble(stiffness, mass)
    real(real64), intent(out) :: stiffness(unknowns, unknowns), mass(unknowns, unknowns)
    real(real64) :: k(6, 6), m(6, 6)
    integer :: element, row, column, places(6)

    stiffness = 0
    mass = 0
    do element = 1, elements
      call make_element(element, k, m)
      places(1:3) = 3*(ends(1, element) - bays - 2) + [1, 2, 3]
      places(4:6) = 3*(ends(2, element) - bays - 2) + [1, 2, 3]
      do column = 1, 6
        do row = 1, 6
          if (min(places(row), places(column)) < 1) cycle
          stiffness(places(row), places(column)) = stiffness(places(row), places(column)) + k(row, column)
          mass(places(row), places(column)) = mass(places(row), places(column)) + m(row, column)
        end do
      end do
    end do
  end subroutine

  ! Cholesky's factor, in the lower triangle.
  subroutine factorise(matrix)
    real(real64), intent(inout) :: matrix(:, :)
    integer :: row, column

    do column = 1, size(matrix, 2)
      matrix(column, column) = sqrt(matrix(column, column) - sum(matrix(column, :column - 1)**2))
      do row = column + 1, size(matrix, 1)
        matrix(row, column) = (matrix(row, column) - dot_product(matrix(row, :column - 1), matrix(column, :column - 1))) &
                              /matrix(column, column)
      end do
    end do
  end subroutine

  function solve(factor, right) result(x)
    real(real64), intent(in) :: factor(:, :), right(:)
    real(real64) :: x(size(right))
    integer :: row

    do row = 1, size(x)
      x(row) = (right(row) - dot_product(factor(row, :row - 1), x(:row - 1)))/factor(row, row)
    end do
    do row = size(x), 1, -1
      x(row) = (x(row) - dot_product(factor(row + 1:, row), x(row + 1:)))/factor(row, row)
    end do
  end function

  ! The ground moves along x.
  real(real64) function ground_acceleration(time)
    real(real64), intent(in) :: time

    ground_acceleration = 3*sin(8*time)*exp(-((time - 2)/1.2_real64)**2)
  end function

  subroutine scatter(values, state)
    real(real64), intent(in) :: values(unknowns)
    real(real64), intent(inout) :: state(6, nodes)

    state(in_plane, bays + 2:) = reshape(values, [3, nodes - bays - 1])
  end subroutine

end module

program shaken_frame

  use, intrinsic :: iso_fortran_env, only: int32, real64
  use frame
  use moxwriter

  implicit none

  type(mox_model) :: model
  integer(int32) :: shape
  real(real64), dimension(unknowns, unknowns) :: stiffness, mass, damping, factor
  real(real64), dimension(unknowns) :: u, v, a, u_before, v_before, along_x, load
  real(real64) :: largest = 0
  integer :: step

  call make_mesh()
  call assemble(stiffness, mass)
  damping = 0.3_real64*mass + 0.001_real64*stiffness
  factor = stiffness + 2/time_step*damping + 4/time_step**2*mass
  call factorise(factor)

  call open_model()
  call write_step(0)
  u = 0
  v = 0
  a = 0
  along_x = 0
  along_x(1::3) = 1
  do step = 1, steps
    u_before = u
    v_before = v
    load = -ground_acceleration(step*time_step)*matmul(mass, along_x) &
           + matmul(mass, 4/time_step**2*u + 4/time_step*v + a) + matmul(damping, 2/time_step*u + v)
    u = solve(factor, load)
    v = 2/time_step*(u - u_before) - v_before
    a = 4/time_step**2*(u - u_before) - 4/time_step*v_before - a
    largest = max(largest, maxval(abs(u(1::3))))
    if (mod(step, steps_per_result) /= 0) cycle
    call scatter(u, displacement)
    call scatter(v, velocity)
    call write_step(step)
  end do
  call model%close()
  write (*, "(a, f6.3, a)") "The frame sways by at most ", largest, " m."

contains

  ! Without stat, what fails ends the program and says why.
  subroutine open_model()
    character(1000) :: path
    type(mox_attributes) :: about
    type(mox_properties) :: steel
    integer :: number

    path = "shaken_frame.mox"
    if (command_argument_count() > 0) call get_command_argument(1, path)
    call model%save_to(path, overwrite=.true., text1="shaken_frame", text2="Newmark")
    call about%set("Title", "A frame of 12 storeys whose ground shakes")
    call model%add_node(MOX_ROOT_GROUP, "Frame", about)
    call model%add_node(MOX_SHAPE, "Steel", id=shape)
    call steel%set(MOX_DIFFUSE_COLOR, [0.4, 0.5, 0.6])
    call model%set_node_data(shape, steel)
    call model%add_array(MOX_COORDINATES, coordinates, [shape])
    call model%add_array(MOX_CONNECTIVITY1, reshape(ends - 1, [2*elements]), [shape])
    call model%add_array(MOX_POLYLENGTH1, [(2, number=1, elements)], [shape])
    call model%add_array(MOX_NODE_IDS, [(number, number=1, nodes)], [shape])
    call model%add_array(MOX_ELEMENT_IDS, [(number, number=1, elements)], [shape])
  end subroutine

  subroutine write_step(number)
    integer, intent(in) :: number
    type(mox_attributes) :: attributes
    character(20) :: name

    write (name, "(a, i0)") "Step ", number
    call attributes%set("StepNumber", number)
    call attributes%set("Time", number*time_step)
    call model%add_array(MOX_DISPLACEMENT6, displacement, [shape], step=name, step_attributes=attributes)
    call model%add_array(MOX_RESULT11, velocity(1:3, :), [shape], name="Velocity", step=name, &
                         step_attributes=attributes)
  end subroutine

end program
