! The smallest useful model: a group, two shapes with a line element, displacements and temperatures; and what is said of a
! call that can't be done.
program first_model

  use, intrinsic :: iso_fortran_env, only: int32, real64
  use moxwriter

  implicit none

  type(mox_model) :: model
  type(mox_attributes) :: time
  type(mox_steps) :: steps
  integer(int32) :: steel, copper
  integer :: stat
  real(real64) :: coordinates(3, 2) = 0, displacement(3, 2) = 0
  real(real64) :: temperature(2) = [293.15_real64, 353.15_real64]
  character(1000) :: path, message

  path = "beam.mox"
  if (command_argument_count() > 0) call get_command_argument(1, path)
  coordinates(1, 2) = 1
  displacement(3, 2) = -0.1_real64

  call model%save_to(path, overwrite=.true.)
  call model%add_node(MOX_ROOT_GROUP, "Beam")
  call model%add_node(MOX_SHAPE, "Steel", id=steel)
  call model%set_current_node_id(1)
  call model%add_node(MOX_SHAPE, "Copper", id=copper)
  call model%add_array(MOX_COORDINATES, coordinates, [steel, copper])
  call model%add_array(MOX_CONNECTIVITY1, [0, 1], [steel, copper])
  call model%add_array(MOX_POLYLENGTH1, [2], [steel, copper])

  call time%set("Time", 0.25_real64)
  call model%add_array(MOX_DISPLACEMENT, displacement, [steel], step="Load 1", step_attributes=time)
  call steps%add("Load 1", time)
  call time%set("Time", 0.5_real64)
  call model%add_array(MOX_DISPLACEMENT, 2*displacement, [steel], step="Load 2", step_attributes=time)
  call steps%add("Load 2", time)
  call model%add_array(MOX_NODE_SCALAR, temperature, [steel, copper], name="Temperature", steps=steps)

  call model%add_array(MOX_DISPLACEMENT, displacement(1:2, :), [steel], step="Load 3", stat=stat, errmsg=message)
  if (stat /= MOX_OK) write (*, "(a)") trim(message)
  call model%close()

end program
