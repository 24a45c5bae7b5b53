#ifndef MOXWRITER_MPI_H
#define MOXWRITER_MPI_H

/// \file
/// Models that the ranks of an MPI program write together, for programs in C: what
/// `Zyl2::Mpi::PartitionedModel` does. It is in a library of its own, moxwriter_mpi.
///
/// \code
/// mox_model* model = NULL;
/// mox_partitioned_model_create(&model, MPI_COMM_WORLD, "wave.moxs", MOX_TERMINATED, 0, 0, NULL);
/// mox_model_add_node(model, MOX_ROOT_GROUP, "Wave", MOX_TERMINATED, NULL, NULL);
/// mox_model_add_node(model, MOX_SHAPE, "Body", MOX_TERMINATED, NULL, &body);
/// ...
/// for (...) {
///     mox_model_add_array(model, NULL, 0, MOX_DISPLACEMENT, &values, &body, 1, steps, NULL);
///     if (mox_model_step(model) != MOX_OK)
///         break;
/// }
/// if (mox_model_destroy(model) != MOX_OK)
///     fprintf(stderr, "%s\n", mox_last_error());
/// \endcode
///
/// The handle is that of a model: all functions of moxwriter.h whose names begin with `mox_model_`
/// take it, for the piece of this rank. Only `mox_model_save_to` ends in `MOX_INVALID_STATE`, since
/// there are files already.
///
/// **Collective calls** are made by all ranks of the communicator, in the same order:
/// `mox_partitioned_model_create`, `mox_model_step`, `mox_model_checkpoint`, `mox_model_close`, and
/// `mox_model_destroy`, unless the model was closed or one of these calls has failed.
///
/// **Failures.** A call that adds, and fails on one rank, returns there what it returns for any
/// model. The next collective call then fails on all ranks, as it does when it fails itself: the
/// status is that of the rank where it began, and the sentence begins with that rank: "Rank 3:
/// Invalid arguments: Displacement needs 3 columns, the array has 2". That is the end of the model,
/// whose files stay incomplete. A rank on which a call has failed may destroy the model at once; it
/// waits for the others' next collective call, which tells them.

#include <moxwriter.h>

#include <mpi.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Makes a model of many ranks, its files, and an index that says that they are not complete.
/// Collective.
///
/// \param model          receives it
/// \param comm           whose ranks the pieces are of; a copy of it is used
/// \param path           path of the index, which ends with ".moxs"; the same on all ranks
/// \param path_length    bytes of the path, or `MOX_TERMINATED`
/// \param ranks_per_file how many ranks, one after the other, share a file; 0 for those of one
///                       machine
/// \param message_bytes  the most bytes that a rank sends at a time, 4096 to 1073741824; 0 for
///                       1048576
/// \param options        how each file is written; overwriting is for the index and all files. May
///                       be null.
/// \return what a rank failed at: `MOX_INVALID_ARGUMENTS` an argument is not what it has to be, or
///         not the same on all ranks; what `mox_model_save_to` returns for one of the files.
///         `MOX_INVALID_STATE` MPI is not initialised. The sentence is `mox_last_error`'s. Files
///         that this call has created are removed again.
MOX_API mox_status mox_partitioned_model_create(mox_model** model, MPI_Comm comm, char const* path,
                                                size_t path_length, int ranks_per_file,
                                                size_t message_bytes, mox_options const* options);

/// The same for a communicator as Fortran, and other languages, have it.
MOX_API mox_status mox_partitioned_model_create_f(mox_model** model, MPI_Fint comm,
                                                  char const* path, size_t path_length,
                                                  int ranks_per_file, size_t message_bytes,
                                                  mox_options const* options);

/// Takes what was added since the last collective call to the files. Collective. To be called after
/// each step of the program, or more often, since a rank that doesn't write keeps what it adds
/// until then. \param model of many ranks \return what a rank failed at; `MOX_INVALID_STATE`
/// another model
MOX_API mox_status mox_model_step(mox_model* model);

/// Lets the next collective call fail on all ranks, for a program that can't go on for reasons of
/// its own, and closes or destroys the model next. Does not wait for other ranks. \param model of
/// many ranks; of another model nothing is changed \param status   what that call is to return;
/// `MOX_UNKNOWN` for what is none of the kinds \param sentence what was wrong; terminated text, of
/// which at most 1023 bytes are told \return `MOX_INVALID_ARGUMENTS` `sentence` is null
MOX_API mox_status mox_model_fail(mox_model* model, mox_status status, char const* sentence);

#ifdef __cplusplus
}
#endif

#endif
