! Uses each type of the module, and a call that is refused.
program host

  use, intrinsic :: iso_fortran_env, only: int32, real64
  use moxwriter

  implicit none

  type(mox_model) :: model
  type(mox_attributes) :: time
  type(mox_properties) :: material
  type(mox_steps) :: steps
  integer(int32) :: shape
  real(real64) :: displacement(3, 2)
  character(1000) :: path
  integer :: stat

  call get_command_argument(1, path)
  displacement = reshape([0, 0, 0, 1, 2, 3], [3, 2])
  call model%save_to(path, overwrite=.true.)
  call model%add_node(MOX_ROOT_GROUP, "Beam")
  call model%add_node(MOX_SHAPE, "Steel", id=shape)
  call material%set(MOX_TRANSPARENCY, 0.5)
  call model%set_node_data(shape, material)
  call time%set("Time", 1.0)
  call steps%add("Load 1", time)
  call model%add_array(MOX_DISPLACEMENT, displacement, [shape], steps=steps)
  call model%add_array(MOX_DISPLACEMENT, displacement(1:2, :), [shape], stat=stat)
  if (stat /= MOX_INVALID_ARGUMENTS) error stop "displacements of two columns"
  call model%close()

end program
