/* The bar of WrittenPieces.h, by a program of many ranks in C.

     bar_c INDEX RANKS_PER_FILE          writes the pieces
     bar_c INDEX RANKS_PER_FILE FAULT    the same, but rank 1 is refused something after the mesh:
                                         "width", an array; "name", what doesn't even reach the
   model; "own", by itself; "path" and "handle", already the model

     bar_c faults                        tells these words

   Each rank prints the sentence that it is told in the end, if there is one. */

#include <moxwriter_mpi.h>

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum
{
    elements = 64,
    steps = 3
};

static char const* fault = "";
static int rank = 0;
static int ranks = 1;

static int meets(char const* which)
{
    return rank == 1 && strcmp(fault, which) == 0;
}

static mox_status make(mox_model** model, char const* path, int ranks_per_file)
{
    mox_options* options = NULL;
    mox_status status = MOX_OK;
    mox_options_create(&options);
    mox_options_set_overwrite(options, 1);
    if (meets("path"))
        path = NULL;
    if (meets("handle"))
        model = NULL;
    status = mox_partitioned_model_create(model, MPI_COMM_WORLD, path, MOX_TERMINATED,
                                          ranks_per_file, 4096, options);
    mox_options_destroy(options);
    return status;
}

static mox_status add_tree(mox_model* model, uint32_t* bar)
{
    float const moved[3] = {1, 2, 3};
    mox_attributes* about = NULL;
    mox_properties* place = NULL;
    uint32_t group = 0;
    mox_status status = mox_attributes_create(&about);
    mox_properties_create(&place);
    mox_attributes_set_string(about, "Solver", MOX_TERMINATED, "test", MOX_TERMINATED);
    mox_properties_set_floats(place, MOX_TRANSLATION, moved, 3);
    mox_model_add_node(model, MOX_ROOT_GROUP, "Wave", MOX_TERMINATED, about, NULL);
    mox_model_add_node(model, MOX_GROUP, "Parts", MOX_TERMINATED, NULL, &group);
    mox_model_set_node_data(model, group, place, NULL);
    status = mox_model_add_node(model, MOX_SHAPE, "Bar", MOX_TERMINATED, NULL, bar);
    mox_properties_destroy(place);
    mox_attributes_destroy(about);
    return status;
}

static mox_status add(mox_model* model, mox_dataset_type type, mox_array values, uint32_t bar,
                      mox_steps const* of)
{
    return mox_model_add_array(model, NULL, 0, type, &values, &bar, 1, of, NULL);
}

static mox_status add_step(mox_model* model, uint32_t bar, int number, double const* values,
                           size_t nodes)
{
    char name[16];
    mox_attributes* time = NULL;
    mox_steps* list = NULL;
    mox_status status = MOX_OK;
    (void)snprintf(name, sizeof name, "Step %d", number);
    mox_attributes_create(&time);
    mox_attributes_set_int32(time, "StepNumber", MOX_TERMINATED, number);
    mox_attributes_set_float(time, "Time", MOX_TERMINATED, 0.5F * (float)number);
    mox_steps_create(&list);
    mox_steps_add(list, name, MOX_TERMINATED, time);
    status = add(model, MOX_DISPLACEMENT, mox_float64_array(values, nodes, 3), bar, list);
    mox_steps_destroy(list);
    mox_attributes_destroy(time);
    return status == MOX_OK ? mox_model_step(model) : status;
}

static mox_status write_bar(mox_model* model)
{
    size_t const nodes = (size_t)(elements / ranks + 1);
    uint32_t const first = (uint32_t)(elements / ranks * rank);
    float coordinates[(elements + 1) * 3];
    double displacement[(elements + 1) * 3];
    uint32_t ids[elements + 1];
    uint32_t connectivity[elements * 2];
    uint32_t lengths[elements];
    uint32_t bar = 0;
    size_t row = 0;
    int number = 0;
    mox_status status = add_tree(model, &bar);
    for (row = 0; row < nodes; ++row) {
        coordinates[3 * row] = (float)(first + row) * 0.5F;
        coordinates[3 * row + 1] = 0;
        coordinates[3 * row + 2] = 1;
        ids[row] = first + (uint32_t)row + 1;
    }
    for (row = 0; row + 1 < nodes; ++row) {
        connectivity[2 * row] = (uint32_t)row;
        connectivity[2 * row + 1] = (uint32_t)row + 1;
        lengths[row] = 2;
    }
    if (status == MOX_OK)
        status = add(model, MOX_COORDINATES, mox_float32_array(coordinates, nodes, 3), bar, NULL);
    if (status == MOX_OK)
        status = add(model, MOX_NODE_IDS, mox_uint32_array(ids, nodes, 1), bar, NULL);
    if (status == MOX_OK)
        status = add(model, MOX_CONNECTIVITY1, mox_uint32_array(connectivity, 2 * (nodes - 1), 1),
                     bar, NULL);
    if (status == MOX_OK)
        status = add(model, MOX_POLYLENGTH1, mox_uint32_array(lengths, nodes - 1, 1), bar, NULL);
    if (meets("width"))
        return add(model, MOX_DISPLACEMENT, mox_uint32_array(ids, nodes, 1), bar, NULL);
    if (meets("name"))
        return mox_model_add_node(model, MOX_GROUP, NULL, 0, NULL, NULL);
    if (meets("own"))
        return mox_model_fail(model, MOX_UNKNOWN, "the solver does not converge");
    for (number = 1; number <= steps && status == MOX_OK; ++number) {
        for (row = 0; row < nodes; ++row) {
            double const node = (double)(first + row);
            displacement[3 * row] = 0;
            displacement[3 * row + 1] = sin(0.1 * node + number);
            displacement[3 * row + 2] = 1e-3 * node;
        }
        status = add_step(model, bar, number, displacement, nodes);
    }
    return status;
}

int main(int argc, char** argv)
{
    mox_model* model = NULL;
    mox_status status = MOX_OK;
    if (argc == 2)
        return printf("width name own path handle\n") < 0;
    if (argc != 3 && argc != 4)
        return 2;
    fault = argc == 4 ? argv[3] : "";
    MPI_Init(&argc, &argv);
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &ranks);
    status = make(&model, argv[1], atoi(argv[2]));
    if (status == MOX_OK)
        status = write_bar(model);
    /* The others are waiting for it, unless they have learned of a failure already. */
    if (mox_model_destroy(model) != MOX_OK || status != MOX_OK)
        printf("%s\n", mox_last_error());
    MPI_Finalize();
    return status == MOX_OK ? 0 : 1;
}
