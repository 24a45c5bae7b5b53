#ifndef MOXWRITER_H
#define MOXWRITER_H

/// \file
/// The library for programs in C, and for whatever calls C: all that `Zyl2::Mox2::Model` does, with
/// the same defaults, the same bytes in the file and the same failures. C99 or any C++.
///
/// \code
/// static double const points[2][3] = {{0, 0, 0}, {1, 0, 0}};
/// mox_array coordinates = mox_float64_array(&points[0][0], 2, 3);
/// mox_model* model = NULL;
/// uint32_t beam = 0;
/// if (mox_model_create(&model) == MOX_OK &&
///     mox_model_save_to(model, "beam.mox", MOX_TERMINATED, NULL) == MOX_OK &&
///     mox_model_add_node(model, MOX_ROOT_GROUP, "Beam", MOX_TERMINATED, NULL, NULL) == MOX_OK &&
///     mox_model_add_node(model, MOX_SHAPE, "Steel", MOX_TERMINATED, NULL, &beam) == MOX_OK &&
///     mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &coordinates, &beam, 1, NULL, NULL) ==
///         MOX_OK)
///     mox_model_close(model);
/// fputs(mox_model_error(model), stderr);
/// mox_model_destroy(model);
/// \endcode
///
/// **Status.** Every function that can fail returns a `mox_status`: `MOX_OK`, which is 0, or the
/// kind of the failure. No exception leaves the library, and no call ends the process. What was
/// wrong, in one sentence, is told by `mox_model_error` of the model, and by `mox_last_error` for
/// calls without a model. A call that failed has given nothing to its result arguments.
///
/// **Handles.** `mox_model`, `mox_options`, `mox_attributes`, `mox_properties` and `mox_steps` are
/// made by a function whose name ends in `_create`, and live until the one that ends in `_destroy`.
/// The latter takes a null pointer, too, and does nothing. A null pointer where a handle is needed,
/// a handle of another type, and one that was destroyed end in `MOX_INVALID_HANDLE`, the last one
/// unless another handle was made since, which may have taken its place. What is given to a call
/// is copied: options, attributes, properties, steps, texts and arrays may be changed or destroyed
/// as soon as it has returned.
///
/// **Life of a model**, in order:
///
/// 1. `mox_model_create`. The model is *empty*: adding ends in "File not open.", asking in "Not
///    initialized".
/// 2. `mox_model_save_to` comes first. It creates the file; the model is *open for writing*.
/// 3. `mox_model_add_node` and `mox_model_add_components` build the tree. The first node becomes
///    the root and has the id 1; every further one goes below the *current* node, and is then the
///    current one. `mox_model_set_current_node_id`, `mox_model_move_to_parent_node` and
///    `mox_model_get_node_id` move the cursor.
/// 4. `mox_model_set_node_data` describes nodes: transforms, materials, attributes.
/// 5. `mox_model_add_array` adds values, on the ids of shapes. Full blocks of values go to the file
///    at once, so that a large result need not fit into memory.
/// 6. `mox_model_close` writes what is pending and finishes the file. The model is *empty* again
///    and may be saved anew.
/// 7. `mox_model_destroy` closes, if that was not done, and says how that went.
///
/// **Texts** are bytes of any encoding, given as a pointer and a length; the length
/// `MOX_TERMINATED` stands for all bytes up to the first zero. A text that the library returns ends
/// with a zero.
///
/// **Threads.** A handle is used by one thread at a time; different handles may be used by
/// different threads at once. Options, attributes, properties and steps that nobody changes may be
/// given to several models at once.

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#define MOX_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/// The version of this header, for the preprocessor.
#define MOX_VERSION_MAJOR 0
#define MOX_VERSION_MINOR 9
#define MOX_VERSION_PATCH 0

/// The length of a text that ends at its first zero byte.
#define MOX_TERMINATED SIZE_MAX

/// No node has this id, and no call returns it: the id for "none" is 0.
#define MOX_INVALID_ID UINT32_MAX

/// How a call ended: one of the constants below.
typedef int mox_status;
enum
{
    MOX_OK = 0,
    /// None of the kinds below.
    MOX_UNKNOWN = 1,
    /// A file that can't be opened.
    MOX_MISCELLANEOUS = 2,
    /// A value that the call can't use; a null pointer where there has to be something.
    MOX_INVALID_ARGUMENTS = 3,
    /// The file exists, and overwriting was not asked for.
    MOX_FILE_OPEN = 5,
    /// Bytes did not reach the file, for instance on a full disk.
    MOX_FILE_WRITE = 7,
    /// An id past the last node; a path that names the root only.
    MOX_OUT_OF_BOUNDS = 11,
    /// More rows, ids or bytes than the format can count, or a value that has no place in it.
    MOX_OVERFLOW = 12,
    /// A negative count.
    MOX_UNDERFLOW = 13,
    /// An id that no node has; no node is current.
    MOX_KEY_NOT_FOUND = 14,
    /// Memory ran out.
    MOX_MEMORY = 16,
    /// A call out of order, such as adding before saving.
    MOX_INVALID_STATE = 17,
    /// A property's value of another type than the property expects.
    MOX_WRONG_TYPE = 19,
    /// A path that begins with another name than the root's.
    MOX_NOT_IMPLEMENTED = 20,
    /// Null, of another type, or destroyed: of this interface alone.
    MOX_INVALID_HANDLE = 100
};

/// What `mox_model_add_node` adds.
typedef int mox_node_type;
enum
{
    /// A group whose flag byte is 1; for the first node (the root) only.
    MOX_FLAGGED_ROOT_GROUP = 1,
    /// A group; for the first node (the root) only.
    MOX_ROOT_GROUP = 2,
    /// A group: a named node with a transform and attributes.
    MOX_GROUP = 3,
    /// A shape: a visible part with a material. Below the root, its id is that of its geometry,
    /// which is what node data and arrays are given to.
    MOX_SHAPE = 4
};

/// What `mox_properties` can hold. Properties of one call are applied in ascending order of these
/// values, so `MOX_AMBIENT_INTENSITY` overrides a `MOX_AMBIENT_COLOR` given with it.
typedef int mox_property_type;
enum
{
    /// Group: 3 floats x, y, z.
    MOX_TRANSLATION = 0,
    /// Group: 4 floats, the axis x, y, z and the angle in radians.
    MOX_ROTATION = 1,
    /// Group: 3 floats, factors along x, y, z.
    MOX_SCALE = 2,
    /// Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    MOX_DIFFUSE_COLOR = 3,
    /// Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    MOX_SPECULAR_COLOR = 4,
    /// Shape: 3 floats red, green, blue in 0..1.
    MOX_EMISSIVE_COLOR = 5,
    /// Shape: 3 floats red, green, blue in 0..1.
    MOX_AMBIENT_COLOR = 6,
    /// Shape: one float, 0 (opaque) to 1.
    MOX_TRANSPARENCY = 7,
    /// Shape: one float; the ambient colour becomes this times the diffuse colour.
    MOX_AMBIENT_INTENSITY = 8,
    /// Shape: one float, 0 to 1.
    MOX_SHININESS = 9,
    /// Setting it always fails.
    MOX_UNSUPPORTED = 10
};

/// What an array holds. The type fixes how many columns it has (the width) and how a reader lays
/// the values out. Types with a default name may be added without one.
typedef int mox_dataset_type;
enum
{
    /// "Connectivity", width 1: rows of the coordinates, for elements of one dimension; the next
    /// two for elements of two and three dimensions.
    MOX_CONNECTIVITY1 = 0,
    MOX_CONNECTIVITY2 = 1,
    MOX_CONNECTIVITY3 = 2,
    /// "Polylength", width 1: nodes per element, for elements of one, two and three dimensions.
    MOX_POLYLENGTH1 = 3,
    MOX_POLYLENGTH2 = 4,
    MOX_POLYLENGTH3 = 5,
    /// "Part Elements", width 1, for elements of one, two and three dimensions.
    MOX_PART_ELEMENTS1 = 6,
    MOX_PART_ELEMENTS2 = 7,
    MOX_PART_ELEMENTS3 = 8,
    /// "Coordinates", width 3.
    MOX_COORDINATES = 9,
    /// No default name; width 1, 3, 6 and 6.
    MOX_RESULT10 = 10,
    MOX_RESULT11 = 11,
    MOX_RESULT12 = 12,
    MOX_RESULT13 = 13,
    /// No default name; width 1, 3, 6 and 6.
    MOX_RESULT14 = 14,
    MOX_RESULT15 = 15,
    MOX_RESULT16 = 16,
    MOX_RESULT17 = 17,
    /// No default name; width 1, 3, 6 and 6.
    MOX_RESULT18 = 18,
    MOX_RESULT19 = 19,
    MOX_RESULT20 = 20,
    MOX_RESULT21 = 21,
    /// No default name; width 1.
    MOX_RESULT22 = 22,
    /// No default name; width 1, 3, 6 and 6.
    MOX_RESULT23 = 23,
    MOX_RESULT24 = 24,
    MOX_RESULT25 = 25,
    MOX_RESULT26 = 26,
    /// "Node Ids", width 1.
    MOX_NODE_IDS = 27,
    /// "Element IDs", width 1.
    MOX_ELEMENT_IDS = 28,
    /// "Displacement", width 3.
    MOX_DISPLACEMENT = 29,
    /// "Displacement", width 6.
    MOX_DISPLACEMENT6 = 30,

    /// On nodes, width 1, such as a temperature. No default name, as with all that follow.
    MOX_NODE_SCALAR = MOX_RESULT10,
    /// On nodes, width 3: x, y, z, such as a velocity.
    MOX_NODE_VECTOR = MOX_RESULT11,
    /// On nodes, width 6: translations along x, y, z, then rotations about them.
    MOX_NODE_VECTOR6 = MOX_RESULT12,
    /// On nodes, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    MOX_NODE_TENSOR = MOX_RESULT13,
    /// On elements, width 1, such as a damage.
    MOX_ELEMENT_SCALAR = MOX_RESULT14,
    /// On elements, width 3: x, y, z.
    MOX_ELEMENT_VECTOR = MOX_RESULT15,
    /// On elements, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    MOX_ELEMENT_TENSOR = MOX_RESULT17
};

/// Type of the elements of an array. Floating-point numbers are stored as floats of 32 bits,
/// rounded to nearest; integers as unsigned ones of 32 bits.
typedef int mox_element;
enum
{
    MOX_FLOAT32 = 0,
    MOX_FLOAT64 = 1,
    MOX_INT32 = 2,
    MOX_UINT32 = 3,
    MOX_INT64 = 4,
    MOX_UINT64 = 5
};

/// What compresses the blocks of a file; which of them there are is known when the library is
/// built. All make zlib streams, which any reader inflates.
typedef int mox_encoder;
enum
{
    /// What the environment variable MOXWRITER_ENCODER names, and zlib where it names none.
    MOX_ENCODER_DEFAULT = 0,
    /// zlib at level 6. It is always there.
    MOX_ENCODER_ZLIB = 1,
    /// libdeflate: faster, and files as small as zlib's.
    MOX_ENCODER_LIBDEFLATE = 2,
    /// ISA-L: the fastest. Files are somewhat larger, and the same calls may express a block in
    /// another way the next time.
    MOX_ENCODER_ISAL = 3
};

/// Values where they are: a table in the memory of the program, which is looked at only while a
/// call lasts.
typedef struct mox_array
{
    /// The element of row 0 and column 0, which need not be aligned; may be null when there are no
    /// rows.
    void const* data;
    /// Type of the elements.
    mox_element element;
    /// Number of rows.
    size_t rows;
    /// Number of columns; 1 for one value per row.
    size_t columns;
    /// Bytes from one row to the next, of any sign.
    ptrdiff_t row_stride;
    /// Bytes from one column to the next, of any sign.
    ptrdiff_t column_stride;
} mox_array;

/// Rows one behind the other, without gaps: for other layouts change the strides of the result, or
/// fill in a `mox_array`.
/// \param data    the first element; may be null when there are no rows
/// \param rows    number of rows
/// \param columns number of columns
/// \return a description of these values; they stay where they are
MOX_API mox_array mox_float32_array(float const* data, size_t rows, size_t columns);
/// \copydoc mox_float32_array
MOX_API mox_array mox_float64_array(double const* data, size_t rows, size_t columns);
/// \copydoc mox_float32_array
MOX_API mox_array mox_int32_array(int32_t const* data, size_t rows, size_t columns);
/// \copydoc mox_float32_array
MOX_API mox_array mox_uint32_array(uint32_t const* data, size_t rows, size_t columns);
/// \copydoc mox_float32_array
MOX_API mox_array mox_int64_array(int64_t const* data, size_t rows, size_t columns);
/// \copydoc mox_float32_array
MOX_API mox_array mox_uint64_array(uint64_t const* data, size_t rows, size_t columns);

/// One result model and its file.
typedef struct mox_model mox_model;
/// How a file is opened and signed.
typedef struct mox_options mox_options;
/// Free named values that describe a node, an array or a step.
typedef struct mox_attributes mox_attributes;
/// The transform of a group, or the material of a shape.
typedef struct mox_properties mox_properties;
/// The result steps that an array belongs to.
typedef struct mox_steps mox_steps;

/* Version and failures */

/// The version of the library in use, such as "1.2.3", which is another than that of this header
/// when a newer shared library was installed after the program was compiled.
/// \return a text that lives as long as the program
MOX_API char const* mox_version(void);

/// The same as a number: `major * 1000000 + minor * 1000 + patch`.
MOX_API int mox_version_number(void);

/// What a status means, whatever the call was.
/// \return a text that lives as long as the program; "Unknown Exception" for a number that is no
///         status
MOX_API char const* mox_status_text(mox_status status);

/// What was wrong with the call of this thread that failed last, in one sentence.
/// \return at most 1023 bytes; empty when none has failed. Lives until the next call of this thread
///         that fails.
MOX_API char const* mox_last_error(void);

/* Models */

/// Makes an empty model, without a file.
/// \param model receives it
/// \return `MOX_INVALID_ARGUMENTS` `model` is null; `MOX_MEMORY`
MOX_API mox_status mox_model_create(mox_model** model);

/// Closes the model, unless that was done, and releases it, even when closing fails.
/// \param model may be null; no handle afterwards
/// \return what `mox_model_close` returns, whose sentence is `mox_last_error`'s;
///         `MOX_INVALID_HANDLE`
MOX_API mox_status mox_model_destroy(mox_model* model);

/// What was wrong with the call of this model that failed last, in one sentence: the text of the
/// failure, then its detail, such as "Invalid arguments: Displacement needs 3 columns, the array
/// has 2".
/// \return of any length; empty when none has failed. Lives until the next call of this model that
///         fails. For what is no model: what `mox_last_error` returns.
MOX_API char const* mox_model_error(mox_model const* model);

/// Creates the file and makes the model ready for adding.
///
/// With an empty path no file is created: the model can be filled, and nothing is written.
///
/// \param model       an empty model
/// \param path        path of the file
/// \param path_length bytes of the path, or `MOX_TERMINATED`
/// \param options     may be null: an existing file is an error, and nobody signs
/// \return `MOX_INVALID_STATE` "Not Empty": the model was saved and not closed since;
///         `MOX_FILE_OPEN` "File exists.", for a recoverable run also where an earlier one can be
///         recovered, or one still writes; `MOX_MISCELLANEOUS` "Unable to open file ...": the
///         system refuses; `MOX_FILE_WRITE` a recoverable run finds no room for its log, or the
///         file system maps no files; after each of the latter three the model must be closed
///         before it can be saved again. `MOX_INVALID_ARGUMENTS` an encoder that the library does
///         not have, a number of threads or a size of blocks that is out of its range, or
///         MOXWRITER_RECOVERABLE is neither 1 nor 0.
MOX_API mox_status mox_model_save_to(mox_model* model, char const* path, size_t path_length,
                                     mox_options const* options);

/// The same with a wide path, which is narrowed to the low 8 bits of each character.
/// \param model       an empty model
/// \param path        path of the file
/// \param path_length characters of the path, or `MOX_TERMINATED`
/// \param options     may be null
/// \return as above
MOX_API mox_status mox_model_save_to_wide(mox_model* model, wchar_t const* path, size_t path_length,
                                          mox_options const* options);

/// Adds a node below the current node and makes it current; the first node becomes the root.
/// Nodes that are to be siblings make their group current first: `mox_model_set_current_node_id`.
///
/// \param model       open for writing
/// \param type        a group or a shape; root groups for the first node only
/// \param name        any bytes
/// \param name_length bytes of the name, or `MOX_TERMINATED`
/// \param attributes  stored on a group; shapes have none, theirs are dropped. May be null.
/// \param id          receives the node's id, for a shape below the root that of its geometry. May
///                    be null.
/// \return `MOX_INVALID_STATE` "File not open."; `MOX_INVALID_ARGUMENTS` "Invalid node type for
///         root node", "Invalid node type"; `MOX_KEY_NOT_FOUND` the current node is none
MOX_API mox_status mox_model_add_node(mox_model* model, mox_node_type type, char const* name,
                                      size_t name_length, mox_attributes const* attributes,
                                      uint32_t* id);

/// Sets properties of a node and merges attributes into it. The node becomes current.
///
/// \param model      open for writing
/// \param id         a group, a shape, or the id that `mox_model_add_node` gave for a shape
/// \param properties applied in ascending order of their types; may be null
/// \param attributes merged into a group's own; for shapes they are dropped. May be null.
/// \return `MOX_INVALID_STATE` "File not open."; `MOX_OUT_OF_BOUNDS` `id` is 0 or past the last
///         node; `MOX_INVALID_ARGUMENTS` "empty node": the node is not of the kind that the
///         property applies to, "invalid array size", "Invalid properties"; `MOX_WRONG_TYPE` a
///         value of another type than the property expects. Properties of lower types stay set.
MOX_API mox_status mox_model_set_node_data(mox_model* model, uint32_t id,
                                           mox_properties const* properties,
                                           mox_attributes const* attributes);

/// Finds a node by the names from the root down to it. The root becomes current.
///
/// \param model            saved, and not closed since
/// \param path             separator, name of the root, separator, name below it, and so on
/// \param path_length      bytes of the path, or `MOX_TERMINATED`
/// \param separator        what stands between the names; null for "/"
/// \param separator_length bytes of the separator, or `MOX_TERMINATED`
/// \param id               receives the id of the first such node in the order of adding; 0 when
///                         there is none or the path is empty
/// \return `MOX_INVALID_STATE` "Not initialized"; `MOX_OUT_OF_BOUNDS` the path names the root only
MOX_API mox_status mox_model_get_node_id(mox_model* model, char const* path, size_t path_length,
                                         char const* separator, size_t separator_length,
                                         uint32_t* id);

/// Finds a node by the names from the root down to it. The root becomes current.
///
/// \param model        saved, and not closed since
/// \param names        name of the root, name below it, and so on, which may contain "/", but not
///                     the byte 0x1E; may be null when there are none
/// \param name_lengths bytes of each name, or `MOX_TERMINATED`; null when all of them are
///                     terminated
/// \param name_count   number of names
/// \param id           receives the id as above; 0 for no names
/// \return as above
MOX_API mox_status mox_model_get_node_id_by_names(mox_model* model, char const* const* names,
                                                  size_t const* name_lengths, size_t name_count,
                                                  uint32_t* id);

/// Makes a node current.
/// \param model saved, and not closed since
/// \param id    of any node
/// \return `MOX_INVALID_STATE` "Not initialized"; `MOX_OUT_OF_BOUNDS` `id` is 0 or past the last
///         node
MOX_API mox_status mox_model_set_current_node_id(mox_model* model, uint32_t id);

/// Makes the current node's parent current; at the root the root stays current.
///
/// After a shape was added, the first call leads from its geometry to the shape, the second to the
/// group that holds it.
///
/// \param model  saved, and not closed since
/// \param parent receives the parent's id, 0 at the root; may be null
/// \return `MOX_INVALID_STATE` "Not initialized"; `MOX_KEY_NOT_FOUND` the current node is none
MOX_API mox_status mox_model_move_to_parent_node(mox_model* model, uint32_t* parent);

/// Adds the nodes that absolute paths such as /car/body/door name, reusing what exists.
///
/// All names of a path are groups, but for the last: it is a shape, or a group when the path ends
/// with the separator. The first name is the root's. Empty paths are skipped.
///
/// \param model            open for writing, unless there are no paths
/// \param paths            may be null when there are none
/// \param path_lengths     bytes of each path, or `MOX_TERMINATED`; null when all of them are
///                         terminated
/// \param path_count       number of paths
/// \param separator        each of its characters separates names; null for "/"
/// \param separator_length bytes of the separator, or `MOX_TERMINATED`
/// \param ids              receives `path_count` ids, in the order of the paths: of a group, or of
///                         a shape's geometry; 1 for the root, 0 for a skipped path. May be null.
/// \return `MOX_INVALID_STATE` "File not open."; `MOX_INVALID_ARGUMENTS` "Relative paths not
///         supported"; `MOX_NOT_IMPLEMENTED` a first name that is not the root's. Earlier paths
///         stay added.
MOX_API mox_status mox_model_add_components(mox_model* model, char const* const* paths,
                                            size_t const* path_lengths, size_t path_count,
                                            char const* separator, size_t separator_length,
                                            uint32_t* ids);

/// Adds the nodes that absolute paths name, in ascending order of the paths' bytes; of equal paths
/// the last one counts.
///
/// \param model            open for writing, unless there are no paths
/// \param paths            may be null when there are none
/// \param path_lengths     bytes of each path, or `MOX_TERMINATED`; null when all of them are
///                         terminated
/// \param attributes       of each path, each of which may be null; null for none at all. Stored
///                         nowhere.
/// \param path_count       number of paths
/// \param separator        each of its characters separates names; null for "/"
/// \param separator_length bytes of the separator, or `MOX_TERMINATED`
/// \param ids              has room for `path_count` ids and receives one for each different path,
///                         in ascending order of the paths; may be null
/// \param id_count         receives their number; may be null
/// \return as above
MOX_API mox_status mox_model_add_component_map(mox_model* model, char const* const* paths,
                                               size_t const* path_lengths,
                                               mox_attributes const* const* attributes,
                                               size_t path_count, char const* separator,
                                               size_t separator_length, uint32_t* ids,
                                               size_t* id_count);

/// Adds values where they are, without a copy of them.
///
/// The values are written once; every pair of an id and a step refers to them. An array without
/// rows, or no ids, adds nothing.
///
/// \param model       open for writing
/// \param name        null for the default name of the type. With a step's name it must be unique
///                    on a node: a later array of the same name takes the earlier one's place.
/// \param name_length bytes of the name, or `MOX_TERMINATED`
/// \param type        what the array holds
/// \param values      rows x width of the type
/// \param ids         the shapes that get the array; an id of a group is passed over. May be null
///                    when there are none.
/// \param id_count    number of ids
/// \param steps       the steps that the values belong to; null for values that belong to no step,
///                    such as the mesh. Steps without any entry register the array nowhere.
/// \param attributes  of the array; where a step has one of the same name, the array's holds. May
///                    be null.
/// \return `MOX_INVALID_STATE` "File not open."; `MOX_INVALID_ARGUMENTS` "Can't guess result name
///         for specified type": give a name, "Can't guess result width for specified type", default
///         text when the width does not match the type, for rows at a null pointer, or elements of
///         no type; `MOX_OVERFLOW` more than 2147483647 rows or ids, more than 4294967295 bytes,
///         or, before anything is written, a finite double whose nearest float is infinite, a
///         negative integer, or one above 4294967295; `MOX_KEY_NOT_FOUND` an id that no node has,
///         and the current node is then none; `MOX_FILE_WRITE`; `MOX_MEMORY` a block can't grow
MOX_API mox_status mox_model_add_array(mox_model* model, char const* name, size_t name_length,
                                       mox_dataset_type type, mox_array const* values,
                                       uint32_t const* ids, size_t id_count, mox_steps const* steps,
                                       mox_attributes const* attributes);

/// Writes what is pending and finishes the file. The model is empty afterwards; closing an empty
/// model does nothing.
/// \param model any
/// \return `MOX_FILE_WRITE` the file is incomplete, or was removed or replaced meanwhile;
///         `MOX_MEMORY`. The file is closed then, too, and a second call does nothing.
MOX_API mox_status mox_model_close(mox_model* model);

/// Waits until all that was added so far is on the disk, so that `mox recover` gives it back after
/// a loss of power, too: see `mox_options_set_recoverable`. The model is as it was. \param model
/// any \param on_disk receives 1 where it is, and 0, without waiting, for a model that can't be
/// recovered
///                or has no file. May be null
/// \return `MOX_INVALID_STATE` "File not open."; `MOX_FILE_WRITE` it is not on the disk
MOX_API mox_status mox_model_checkpoint(mox_model* model, int* on_disk);

/// How long calls of this model have waited for its threads since it was saved, `mox_model_close`
/// included once it has returned.
/// \param model   any
/// \param seconds receives it; 0 without threads. May be null
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_model_waited_seconds(mox_model* model, double* seconds);

/* Options */

/// Makes the default options: an existing file is an error, and no texts.
/// \param options receives them
/// \return `MOX_INVALID_ARGUMENTS` `options` is null; `MOX_MEMORY`
MOX_API mox_status mox_options_create(mox_options** options);

/// \param options may be null; no handle afterwards
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_options_destroy(mox_options* options);

/// Whether an existing file is overwritten, if `overwrite` is not 0, or an error.
MOX_API mox_status mox_options_set_overwrite(mox_options* options, int overwrite);

/// First text of the file's writing record, for instance the program's name and version.
/// \param options any
/// \param text    any bytes
/// \param length  bytes of the text, or `MOX_TERMINATED`
/// \return `MOX_INVALID_ARGUMENTS` `text` is null; `MOX_MEMORY`
MOX_API mox_status mox_options_set_text1(mox_options* options, char const* text, size_t length);
/// Second text of the writing record, used only when the first one is not empty.
/// \copydetails mox_options_set_text1
MOX_API mox_status mox_options_set_text2(mox_options* options, char const* text, size_t length);
/// A text that is carried along and written nowhere.
/// \copydetails mox_options_set_text1
MOX_API mox_status mox_options_set_text3(mox_options* options, char const* text, size_t length);

/// What compresses the file. Whether there is such an encoder is checked when a model is saved.
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_options_set_encoder(mox_options* options, mox_encoder encoder);

/// How many threads of its own the model may start to compress full blocks while the program goes
/// on. The bytes of the file do not depend on it.
/// \param options any
/// \param threads 0 to 1024, which is checked when a model is saved; a negative number for what the
///                environment variable MOXWRITER_THREADS says, and for 0 where that is not set
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_options_set_threads(mox_options* options, int threads);

/// From how many bytes on a block of the file is full.
/// \param options any
/// \param bytes   1 to 4294967294, which is checked when a model is saved; 0 for what the
///                environment variable MOXWRITER_DEFAULT_BLOCK_SIZE says, and for 209715200
///                (200 MiB) where that is not set
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_options_set_block_size(mox_options* options, uint64_t bytes);

/// Whether what was added survives the process: `mox recover` makes a whole file of it. Until the
/// model is closed there is a folder beside the file, which has its name and ".recovery" behind it.
/// The bytes of the file do not depend on it.
/// \param options     any
/// \param recoverable 1 or 0; a negative number for what the environment variable
///                    MOXWRITER_RECOVERABLE says, and for 0 where that is not set
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_options_set_recoverable(mox_options* options, int recoverable);

/* Attributes */

/// Makes an empty set of attributes.
/// \param attributes receives it
/// \return `MOX_INVALID_ARGUMENTS` `attributes` is null; `MOX_MEMORY`
MOX_API mox_status mox_attributes_create(mox_attributes** attributes);

/// \param attributes may be null; no handle afterwards
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_attributes_destroy(mox_attributes* attributes);

/// Removes all entries.
MOX_API mox_status mox_attributes_clear(mox_attributes* attributes);

/// Inserts or overwrites the entry of that name; the functions below likewise.
/// \param attributes  any
/// \param name        any bytes
/// \param name_length bytes of the name, or `MOX_TERMINATED`
/// \param value       stored as it is
/// \return `MOX_INVALID_ARGUMENTS` a text is null; `MOX_MEMORY`
MOX_API mox_status mox_attributes_set_float(mox_attributes* attributes, char const* name,
                                            size_t name_length, float value);
/// Stored as the nearest float.
/// \copydetails mox_attributes_set_float
MOX_API mox_status mox_attributes_set_double(mox_attributes* attributes, char const* name,
                                             size_t name_length, double value);
/// \copydetails mox_attributes_set_float
MOX_API mox_status mox_attributes_set_int32(mox_attributes* attributes, char const* name,
                                            size_t name_length, int32_t value);
/// \copydetails mox_attributes_set_float
MOX_API mox_status mox_attributes_set_uint32(mox_attributes* attributes, char const* name,
                                             size_t name_length, uint32_t value);
/// Of which the low 32 bits are stored.
/// \copydetails mox_attributes_set_float
MOX_API mox_status mox_attributes_set_int64(mox_attributes* attributes, char const* name,
                                            size_t name_length, int64_t value);
/// Of which at most 256 bytes are stored, up to the first zero byte.
/// \param attributes   any
/// \param name         any bytes
/// \param name_length  bytes of the name, or `MOX_TERMINATED`
/// \param value        any bytes
/// \param value_length bytes of the value, or `MOX_TERMINATED`
/// \return as above
MOX_API mox_status mox_attributes_set_string(mox_attributes* attributes, char const* name,
                                             size_t name_length, char const* value,
                                             size_t value_length);

/* Properties */

/// Makes an empty set of properties.
/// \param properties receives it
/// \return `MOX_INVALID_ARGUMENTS` `properties` is null; `MOX_MEMORY`
MOX_API mox_status mox_properties_create(mox_properties** properties);

/// \param properties may be null; no handle afterwards
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_properties_destroy(mox_properties* properties);

/// Removes all entries.
MOX_API mox_status mox_properties_clear(mox_properties* properties);

/// Inserts or overwrites the entry of that type; the functions below likewise. Whether the value is
/// what the property expects, and whether there is such a property, is checked by the call that
/// applies it, `mox_model_set_node_data`.
/// \param properties any
/// \param type       which property
/// \param value      the value of one that expects a float
/// \return `MOX_MEMORY`
MOX_API mox_status mox_properties_set_float(mox_properties* properties, mox_property_type type,
                                            float value);
/// Held as the nearest float.
/// \copydetails mox_properties_set_float
MOX_API mox_status mox_properties_set_double(mox_properties* properties, mox_property_type type,
                                             double value);
/// \param properties any
/// \param type       which property
/// \param values     `count` floats; may be null when there are none
/// \param count      number of values
/// \return `MOX_INVALID_ARGUMENTS` values, but a null pointer; `MOX_MEMORY`
MOX_API mox_status mox_properties_set_floats(mox_properties* properties, mox_property_type type,
                                             float const* values, size_t count);
/// Integers, truth values and texts, which no property expects.
/// \copydetails mox_properties_set_float
MOX_API mox_status mox_properties_set_int32(mox_properties* properties, mox_property_type type,
                                            int32_t value);
/// Held as 0 or 1.
/// \copydetails mox_properties_set_float
MOX_API mox_status mox_properties_set_bool(mox_properties* properties, mox_property_type type,
                                           int value);
/// \copydetails mox_properties_set_floats
MOX_API mox_status mox_properties_set_int32s(mox_properties* properties, mox_property_type type,
                                             int32_t const* values, size_t count);
/// \param properties any
/// \param type       which property
/// \param value      any bytes
/// \param length     bytes of the value, or `MOX_TERMINATED`
/// \return `MOX_INVALID_ARGUMENTS` `value` is null; `MOX_MEMORY`
MOX_API mox_status mox_properties_set_string(mox_properties* properties, mox_property_type type,
                                             char const* value, size_t length);

/* Steps */

/// Makes a list of no steps.
/// \param steps receives it
/// \return `MOX_INVALID_ARGUMENTS` `steps` is null; `MOX_MEMORY`
MOX_API mox_status mox_steps_create(mox_steps** steps);

/// \param steps may be null; no handle afterwards
/// \return `MOX_INVALID_HANDLE`
MOX_API mox_status mox_steps_destroy(mox_steps* steps);

/// Removes all entries.
MOX_API mox_status mox_steps_clear(mox_steps* steps);

/// Adds a step at the end.
/// \param steps       any
/// \param name        of the step, any bytes; empty for values that belong to no step. Together
///                    with an array's name it must be unique on a node.
/// \param name_length bytes of the name, or `MOX_TERMINATED`
/// \param attributes  what else is known of the step, such as its time; may be null
/// \return `MOX_INVALID_ARGUMENTS` `name` is null; `MOX_MEMORY`
MOX_API mox_status mox_steps_add(mox_steps* steps, char const* name, size_t name_length,
                                 mox_attributes const* attributes);

#ifdef __cplusplus
}
#endif

#endif
