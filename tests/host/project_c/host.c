/* Writes a model with nothing but the installed header and library. */

#include <moxwriter.h>

#include <stdio.h>

static mox_status write_model(mox_model* model, char const* path)
{
    static float const points[2][3] = {{0, 0, 0}, {1, 0, 0}};
    mox_array const coordinates = mox_float32_array(&points[0][0], 2, 3);
    uint32_t shape = 0;
    mox_status status = mox_model_save_to(model, path, MOX_TERMINATED, NULL);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_ROOT_GROUP, "Root", MOX_TERMINATED, NULL, NULL);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_SHAPE, "Shape", MOX_TERMINATED, NULL, &shape);
    if (status == MOX_OK)
        status = mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &coordinates, &shape, 1, NULL,
                                     NULL);
    return status == MOX_OK ? mox_model_close(model) : status;
}

int main(int argc, char** argv)
{
    char const* path = argc > 1 ? argv[1] : "host.mox";
    mox_model* model = NULL;
    mox_status status = MOX_OK;
    remove(path);
    status = mox_model_create(&model);
    if (status == MOX_OK)
        status = write_model(model, path);
    if (status != MOX_OK)
        fprintf(stderr, "%s\n", mox_last_error());
    mox_model_destroy(model);
    /* The library is of the same version as the header. */
    if (mox_version_number() / 1000000 != MOX_VERSION_MAJOR)
        return 1;
    return status == MOX_OK ? 0 : 1;
}
