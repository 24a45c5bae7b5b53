/* The smallest useful model: a group, one shape with a line element, and a displacement. */

#include <moxwriter.h>

#include <stdio.h>

static mox_status add_beam(mox_model* model)
{
    static double const points[2][3] = {{0, 0, 0}, {1, 0, 0}};
    static double const moved[2][3] = {{0, 0, 0}, {0, 0, -0.1}};
    static uint32_t const line[2] = {0, 1};
    static uint32_t const length[1] = {2};
    mox_array coordinates = mox_float64_array(&points[0][0], 2, 3);
    mox_array connectivity = mox_uint32_array(line, 2, 1);
    mox_array polylength = mox_uint32_array(length, 1, 1);
    mox_array displacement = mox_float64_array(&moved[0][0], 2, 3);
    mox_steps* load = NULL;
    uint32_t beam = 0;
    mox_status status = mox_steps_create(&load);
    if (status == MOX_OK)
        status = mox_steps_add(load, "Load 1", MOX_TERMINATED, NULL);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_ROOT_GROUP, "Beam", MOX_TERMINATED, NULL, NULL);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_SHAPE, "Steel", MOX_TERMINATED, NULL, &beam);
    if (status == MOX_OK)
        status = mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &coordinates, &beam, 1, NULL,
                                     NULL);
    if (status == MOX_OK)
        status = mox_model_add_array(model, NULL, 0, MOX_CONNECTIVITY1, &connectivity, &beam, 1,
                                     NULL, NULL);
    if (status == MOX_OK)
        status =
            mox_model_add_array(model, NULL, 0, MOX_POLYLENGTH1, &polylength, &beam, 1, NULL, NULL);
    if (status == MOX_OK)
        status = mox_model_add_array(model, NULL, 0, MOX_DISPLACEMENT, &displacement, &beam, 1,
                                     load, NULL);
    mox_steps_destroy(load);
    return status;
}

int main(int argc, char** argv)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    mox_status status = mox_options_create(&options);
    if (status == MOX_OK)
        status = mox_options_set_overwrite(options, 1);
    if (status == MOX_OK)
        status = mox_model_create(&model);
    if (status == MOX_OK)
        status = mox_model_save_to(model, argc > 1 ? argv[1] : "beam.mox", MOX_TERMINATED, options);
    if (status == MOX_OK)
        status = add_beam(model);
    if (status == MOX_OK)
        status = mox_model_close(model);
    if (status != MOX_OK)
        fprintf(stderr, "%s\n", mox_last_error());
    mox_model_destroy(model);
    mox_options_destroy(options);
    return status == MOX_OK ? 0 : 1;
}
