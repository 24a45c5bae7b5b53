!> Models that the ranks of an MPI program write together.
!!
!!     use mpi_f08
!!     use moxwriter
!!     use moxwriter_mpi
!!     type(mox_partitioned_model) :: model
!!
!!     call model%create(MPI_COMM_WORLD, "wave.moxs")
!!     call model%add_node(MOX_ROOT_GROUP, "Wave")
!!     call model%add_node(MOX_SHAPE, "Body", id=body)
!!     ...
!!     do number = 1, steps
!!       call model%add_array(MOX_DISPLACEMENT, values, [body], step=name)
!!       call model%step()
!!     end do
!!     call model%close()
!!
!! A rank uses it as it uses `mox_model`, for its own piece, but `create` stands in the place of `save_to`, and there is
!! `step`.
!!
!! **Collective calls** are made by all ranks of the communicator, in the same order: `create`, `step`, `checkpoint` and
!! `close`; and the end of the variable, unless `close` was called or one of these calls has failed.
!!
!! **Failures.** A call that adds, and fails on one rank, tells it there, as for any model. The next collective call then
!! fails on all ranks, as it does when it fails itself: `stat` is that of the rank where it began, and `errmsg` begins
!! with that rank: "Rank 3: Invalid arguments: Displacement needs 3 columns, the array has 2". That is the end of the
!! model, whose files stay incomplete. A rank on which a call has failed may close the model at once: it waits for the
!! others' next collective call, which tells them. Without `stat` a failure ends the program by `error stop`, and MPI ends
!! the other ranks.
module moxwriter_mpi

  use, intrinsic :: iso_c_binding, only: c_int, c_null_ptr, c_ptr, c_size_t
  use, intrinsic :: iso_fortran_env, only: int64
  use mpi_f08, only: MPI_Comm
  use moxwriter
  use moxwriter_c, only: c_last_error, c_model_fail, c_options_destroy

  implicit none
  private

  public :: mox_partitioned_model

  !> The piece of one rank. A variable that was used can't be assigned to another.
  type, extends(mox_model) :: mox_partitioned_model
  contains
    procedure :: create
    procedure :: step
    procedure :: fail
  end type

  interface

    function c_partitioned_model_create(model, comm, path, path_length, ranks_per_file, message_bytes, options) &
        result(status) bind(c, name="mox_partitioned_model_create_f")
      import :: c_int, c_ptr, c_size_t
      type(c_ptr), intent(inout) :: model
      integer(c_int), value :: comm, ranks_per_file
      type(c_ptr), value :: path, options
      integer(c_size_t), value :: path_length, message_bytes
      integer(c_int) :: status
    end function

    function c_model_step(model) result(status) bind(c, name="mox_model_step")
      import :: c_int, c_ptr
      type(c_ptr), value :: model
      integer(c_int) :: status
    end function

  end interface

contains

  !> Makes the files, and an index that says that they are not complete. Collective.
  !!
  !! \param comm           whose ranks the pieces are of; a copy of it is used
  !! \param path           of the index, which ends with ".moxs"; the same on all ranks. The files are beside it.
  !! \param ranks_per_file how many ranks, one after the other, share a file. Absent, or 0: those of one machine.
  !! \param message_bytes  the most bytes that a rank sends at a time, 4096 to 1073741824. Absent, or 0: 1048576.
  !! \param overwrite      whether the index and the files are overwritten; this and all that follow as for `save_to` of
  !!                       a `mox_model`
  !! \param stat           `MOX_INVALID_ARGUMENTS` an argument is not what it has to be, or not the same on all ranks; what
  !!                       `save_to` fails at for one of the files; `MOX_INVALID_STATE` MPI is not initialised. Files that
  !!                       this call has made are removed again.
  !! \param errmsg         what was wrong
  subroutine create(this, comm, path, ranks_per_file, message_bytes, overwrite, text1, text2, text3, encoder, threads, &
                    block_size, recoverable, stat, errmsg)
    class(mox_partitioned_model), intent(inout) :: this
    type(MPI_Comm), intent(in) :: comm
    character(*), intent(in), target :: path
    integer, intent(in), optional :: ranks_per_file
    integer(int64), intent(in), optional :: message_bytes
    logical, intent(in), optional :: overwrite
    character(*), intent(in), optional :: text1
    character(*), intent(in), optional :: text2
    character(*), intent(in), optional :: text3
    integer, intent(in), optional :: encoder
    integer, intent(in), optional :: threads
    integer(int64), intent(in), optional :: block_size
    logical, intent(in), optional :: recoverable
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    type(c_ptr) :: handle, options, start
    integer(c_int) :: ranks, status, unused
    integer(c_size_t) :: bytes

    ranks = 0
    if (present(ranks_per_file)) ranks = ranks_per_file
    bytes = 0
    if (present(message_bytes)) bytes = message_bytes
    start = mox_start_of(path)
    handle = c_null_ptr
    status = mox_make_options(options, overwrite, text1, text2, text3, encoder, threads, block_size, recoverable)
    if (status == MOX_OK) then
      status = c_partitioned_model_create(handle, comm%mpi_val, start, mox_length_of(path), ranks, bytes, options)
      call mox_give_handle(this, handle)
      call mox_tell(status, c_last_error(), stat, errmsg)
    else
      call mox_tell(status, c_last_error(), stat, errmsg)
      ! Without a path it fails, and lets the other ranks know.
      unused = c_partitioned_model_create(handle, comm%mpi_val, c_null_ptr, 0_c_size_t, ranks, bytes, c_null_ptr)
    end if
    unused = c_options_destroy(options)
  end subroutine

  !> Takes what was added since the last collective call to the files. Collective. To be called after each step of the
  !! program, or more often, since a rank that doesn't write keeps what it adds until then.
  !!
  !! \param stat   what a rank failed at
  !! \param errmsg what was wrong, and on which rank
  subroutine step(this, stat, errmsg)
    class(mox_partitioned_model), intent(inout) :: this
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    call mox_tell_of(this, c_model_step(mox_handle(this)), stat, errmsg)
  end subroutine

  !> Lets the next collective call fail on all ranks, for a program that can't go on for reasons of its own, and closes
  !! the model next. Does not wait for other ranks.
  !!
  !! \param sentence what was wrong; at most 1023 bytes are told
  !! \param stat     `MOX_INVALID_HANDLE` before `create`
  !! \param errmsg   what was wrong
  subroutine fail(this, sentence, stat, errmsg)
    class(mox_partitioned_model), intent(inout) :: this
    character(*), intent(in) :: sentence
    integer, intent(out), optional :: stat
    character(*), intent(inout), optional :: errmsg

    character(1023), target :: text

    text = sentence
    text(min(len_trim(text) + 1, len(text)):) = achar(0)
    call mox_tell_of(this, c_model_fail(mox_handle(this), MOX_UNKNOWN, mox_start_of(text)), stat, errmsg)
  end subroutine

end module moxwriter_mpi
