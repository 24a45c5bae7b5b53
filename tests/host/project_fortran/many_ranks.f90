! A host of several ranks in Fortran: a rank alone is one of them.
program many_ranks

  use, intrinsic :: iso_fortran_env, only: int32, real64
  use mpi_f08
  use moxwriter
  use moxwriter_mpi

  implicit none

  character(200) :: path

  call get_command_argument(1, path)
  call MPI_Init()
  call write_model()
  call MPI_Finalize()

contains

  subroutine write_model()
    type(mox_partitioned_model) :: model
    integer(int32) :: beam

    call model%create(MPI_COMM_WORLD, path, overwrite=.true.)
    call model%add_node(MOX_ROOT_GROUP, "Beam")
    call model%add_node(MOX_SHAPE, "Steel", id=beam)
    call model%add_array(MOX_COORDINATES, reshape([0.0_real64, 0.0_real64, 0.0_real64, 1.0_real64, 0.0_real64, &
                                                   0.0_real64], [3, 2]), [beam])
    call model%step()
    call model%close()
  end subroutine

end program
