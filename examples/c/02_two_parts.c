/* The host that the start page shows: two parts side by side in a group that is moved, a block of
   hexahedra and a cap of tetrahedra, with displacements of nodes and stresses of elements in three
   steps, a material and a set of nodes. 07_two_parts.cpp writes the same. */

#include <moxwriter.h>

#include <stdio.h>
#include <stdlib.h>

enum
{
    MOST_NODES = 12,
    MOST_ELEMENTS = 2
};

static double const block_nodes[12][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                          {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1},
                                          {0, 0, 2}, {1, 0, 2}, {1, 1, 2}, {0, 1, 2}};
static int32_t const hexahedra[2][8] = {{0, 1, 2, 3, 4, 5, 6, 7}, {4, 5, 6, 7, 8, 9, 10, 11}};

static double const cap_nodes[5][3] = {{0, 0, 2}, {1, 0, 2}, {1, 1, 2}, {0, 1, 2}, {0.5, 0.5, 3}};
static int32_t const tetrahedra[2][4] = {{0, 1, 2, 4}, {0, 2, 3, 4}};

static mox_model* model = NULL;

/* A solver would hand the status on; this one says what was wrong, and ends. */
static void check(mox_status status)
{
    if (status == MOX_OK)
        return;
    fprintf(stderr, "%s\n", mox_last_error());
    exit(EXIT_FAILURE);
}

/* An array of one shape; without a name, its type gives it one. */
static void add(uint32_t shape, char const* name, mox_dataset_type type, mox_array values,
                mox_steps const* steps, mox_attributes const* attributes)
{
    check(mox_model_add_array(model, name, MOX_TERMINATED, type, &values, &shape, 1, steps,
                              attributes));
}

static void add_mesh(uint32_t shape, double const* nodes, size_t node_count,
                     int32_t const* elements, size_t element_count, int32_t nodes_per_element)
{
    int32_t lengths[MOST_ELEMENTS];
    size_t element;
    for (element = 0; element < element_count; ++element)
        lengths[element] = nodes_per_element;
    add(shape, NULL, MOX_COORDINATES, mox_float64_array(nodes, node_count, 3), NULL, NULL);
    /* Connectivity3 is that of solids: rows of the coordinates, counted from 0. */
    add(shape, NULL, MOX_CONNECTIVITY3,
        mox_int32_array(elements, element_count * (size_t)nodes_per_element, 1), NULL, NULL);
    add(shape, NULL, MOX_POLYLENGTH3, mox_int32_array(lengths, element_count, 1), NULL, NULL);
}

static void add_step(uint32_t shape, int number, mox_array displacement, mox_array stress)
{
    mox_attributes* attributes = NULL;
    mox_steps* step = NULL;
    char name[32];
    sprintf(name, "Step %d", number);
    check(mox_attributes_create(&attributes));
    check(mox_attributes_set_int32(attributes, "StepNumber", MOX_TERMINATED, number));
    check(mox_attributes_set_double(attributes, "Time", MOX_TERMINATED, 0.5 * number));
    check(mox_steps_create(&step));
    check(mox_steps_add(step, name, MOX_TERMINATED, attributes));
    add(shape, NULL, MOX_DISPLACEMENT, displacement, step, NULL);
    add(shape, "Stress", MOX_ELEMENT_TENSOR, stress, step, NULL);
    mox_steps_destroy(step);
    mox_attributes_destroy(attributes);
}

/* What a solver would compute: the parts sink, and are pressed together. */
static void add_results(uint32_t shape, double const (*nodes)[3], size_t node_count,
                        size_t element_count)
{
    double displacement[MOST_NODES][3] = {{0}};
    /* xx, yy, zz, xy, yz, zx of each element. */
    double stress[MOST_ELEMENTS][6] = {{0}};
    int number;
    size_t row;
    for (number = 1; number <= 3; ++number) {
        for (row = 0; row < node_count; ++row)
            displacement[row][2] = -0.01 * number * nodes[row][2];
        for (row = 0; row < element_count; ++row)
            stress[row][2] = -2.5 * number;
        add_step(shape, number, mox_float64_array(displacement[0], node_count, 3),
                 mox_float64_array(stress[0], element_count, 6));
    }
}

/* A set is 1 for the nodes that are in it, and 0 for the others. */
static void add_set(uint32_t shape)
{
    static int32_t const clamped[12] = {1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0};
    mox_attributes* is_set = NULL;
    check(mox_attributes_create(&is_set));
    check(mox_attributes_set_string(is_set, "Category", MOX_TERMINATED, "NodeSet", MOX_TERMINATED));
    add(shape, "Node Set Clamped", MOX_NODE_SCALAR, mox_int32_array(clamped, 12, 1), NULL, is_set);
    mox_attributes_destroy(is_set);
}

static void set_material(uint32_t shape)
{
    static float const red[3] = {0.8F, 0.1F, 0.1F};
    mox_properties* material = NULL;
    check(mox_properties_create(&material));
    check(mox_properties_set_floats(material, MOX_DIFFUSE_COLOR, red, 3));
    check(mox_properties_set_float(material, MOX_TRANSPARENCY, 0.25F));
    check(mox_model_set_node_data(model, shape, material, NULL));
    mox_properties_destroy(material);
}

static uint32_t add_moved_group(void)
{
    static float const along_x[3] = {2, 0, 0};
    static float const around_z[4] = {0, 0, 1, 0.5F}; /* axis, radians */
    mox_properties* transform = NULL;
    uint32_t group = 0;
    check(mox_model_add_node(model, MOX_GROUP, "Moved", MOX_TERMINATED, NULL, &group));
    check(mox_properties_create(&transform));
    check(mox_properties_set_floats(transform, MOX_TRANSLATION, along_x, 3));
    check(mox_properties_set_floats(transform, MOX_ROTATION, around_z, 4));
    check(mox_model_set_node_data(model, group, transform, NULL));
    mox_properties_destroy(transform);
    return group;
}

/* A node goes below the current one, which is the one that was added last: shapes that are to stand
   beside each other make their group current first. */
static uint32_t add_shape(uint32_t group, char const* name)
{
    uint32_t shape = 0;
    check(mox_model_set_current_node_id(model, group));
    check(mox_model_add_node(model, MOX_SHAPE, name, MOX_TERMINATED, NULL, &shape));
    return shape;
}

static void open_model(char const* path)
{
    mox_options* options = NULL;
    check(mox_model_create(&model));
    check(mox_options_create(&options));
    check(mox_options_set_overwrite(options, 1));
    check(mox_model_save_to(model, path, MOX_TERMINATED, options));
    mox_options_destroy(options);
}

int main(int argc, char** argv)
{
    uint32_t group;
    uint32_t block;
    uint32_t cap;
    open_model(argc > 1 ? argv[1] : "two_parts.mox");
    check(mox_model_add_node(model, MOX_ROOT_GROUP, "Two parts", MOX_TERMINATED, NULL, NULL));
    group = add_moved_group();
    block = add_shape(group, "Block");
    add_mesh(block, block_nodes[0], 12, hexahedra[0], 2, 8);
    add_results(block, block_nodes, 12, 2);
    add_set(block);
    cap = add_shape(group, "Cap");
    add_mesh(cap, cap_nodes[0], 5, tetrahedra[0], 2, 4);
    add_results(cap, cap_nodes, 5, 2);
    set_material(cap);
    check(mox_model_close(model));
    check(mox_model_destroy(model));
    return EXIT_SUCCESS;
}
