/* A host of several ranks in C, as far as it is told by the headers: a rank alone is one of them.
 */

#include <moxwriter_mpi.h>

#include <stdio.h>

static mox_status write_model(mox_model* model)
{
    static double const points[2][3] = {{0, 0, 0}, {1, 0, 0}};
    mox_array const coordinates = mox_float64_array(&points[0][0], 2, 3);
    uint32_t beam = 0;
    mox_model_add_node(model, MOX_ROOT_GROUP, "Beam", MOX_TERMINATED, NULL, NULL);
    mox_model_add_node(model, MOX_SHAPE, "Steel", MOX_TERMINATED, NULL, &beam);
    mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &coordinates, &beam, 1, NULL, NULL);
    return mox_model_step(model);
}

int main(int argc, char** argv)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    mox_status status = MOX_OK;
    if (argc < 2)
        return 2;
    MPI_Init(&argc, &argv);
    mox_options_create(&options);
    mox_options_set_overwrite(options, 1);
    status = mox_partitioned_model_create(&model, MPI_COMM_WORLD, argv[1], MOX_TERMINATED, 0, 0,
                                          options);
    mox_options_destroy(options);
    if (status == MOX_OK)
        status = write_model(model);
    if (mox_model_destroy(model) != MOX_OK || status != MOX_OK) {
        fprintf(stderr, "%s\n", mox_last_error());
        status = MOX_UNKNOWN;
    }
    MPI_Finalize();
    return status == MOX_OK ? 0 : 1;
}
