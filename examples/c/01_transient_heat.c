/* A solver in C that writes as it goes: a steel plate that is heated at one edge. Bilinear finite
   elements, lumped heat capacity, backward Euler in time, conjugate gradients. Temperatures are
   members of the structure of a node, and are written from there without a copy. */

#include <moxwriter.h>

#include <stdio.h>

enum
{
    COLUMNS = 40,
    ROWS = 20,
    NODES = (COLUMNS + 1) * (ROWS + 1),
    ELEMENTS = COLUMNS * ROWS,
    STEPS = 20
};

/* Metres, seconds, kilograms, Kelvin. */
static double const size = 0.005;
static double const conductivity = 50;
static double const capacity = 7850 * 480.0;
static double const time_step = 5;
static double const ambient = 293.15;
static double const heated = 573.15;

typedef struct node
{
    double position[3];
    double temperature;
    int is_heated;
} node;

static node nodes[NODES];
static uint32_t elements[ELEMENTS][4];

static void make_mesh(void)
{
    int row;
    int column;
    for (row = 0; row <= ROWS; ++row)
        for (column = 0; column <= COLUMNS; ++column) {
            node* here = &nodes[row * (COLUMNS + 1) + column];
            here->position[0] = column * size;
            here->position[1] = row * size;
            here->is_heated = column == 0;
            here->temperature = here->is_heated ? heated : ambient;
        }
    for (row = 0; row < ROWS; ++row)
        for (column = 0; column < COLUMNS; ++column) {
            uint32_t* corners = elements[row * COLUMNS + column];
            corners[0] = (uint32_t)(row * (COLUMNS + 1) + column);
            corners[1] = corners[0] + 1;
            corners[2] = corners[1] + COLUMNS + 1;
            corners[3] = corners[0] + COLUMNS + 1;
        }
}

/* Adds what squares conduct: result += factor * K * values. */
static void add_conduction(double const* values, double factor, double* result)
{
    static double const stiffness[4][4] = {
        {4, -1, -2, -1}, {-1, 4, -1, -2}, {-2, -1, 4, -1}, {-1, -2, -1, 4}};
    int element;
    int i;
    int j;
    for (element = 0; element < ELEMENTS; ++element)
        for (i = 0; i < 4; ++i)
            for (j = 0; j < 4; ++j)
                result[elements[element][i]] +=
                    factor * conductivity / 6 * stiffness[i][j] * values[elements[element][j]];
}

static void add_capacity(double const* values, double factor, double* result)
{
    int element;
    int i;
    for (element = 0; element < ELEMENTS; ++element)
        for (i = 0; i < 4; ++i)
            result[elements[element][i]] +=
                factor * capacity * size * size / 4 * values[elements[element][i]];
}

/* Nothing changes where the temperature is given. */
static void hold_heated(double* values)
{
    int i;
    for (i = 0; i < NODES; ++i)
        if (nodes[i].is_heated)
            values[i] = 0;
}

static double product(double const* left, double const* right)
{
    double sum = 0;
    int i;
    for (i = 0; i < NODES; ++i)
        sum += left[i] * right[i];
    return sum;
}

/* Solves (C / dt + K) change = -K temperature by conjugate gradients. */
static void advance(void)
{
    static double temperature[NODES];
    static double residual[NODES];
    static double direction[NODES];
    static double image[NODES];
    double square;
    double tolerance;
    int iteration;
    int i;
    for (i = 0; i < NODES; ++i) {
        temperature[i] = nodes[i].temperature;
        residual[i] = 0;
    }
    add_conduction(temperature, -1, residual);
    hold_heated(residual);
    for (i = 0; i < NODES; ++i)
        direction[i] = residual[i];
    square = product(residual, residual);
    tolerance = 1e-20 * square;
    for (iteration = 0; square > tolerance && iteration < NODES; ++iteration) {
        double previous = square;
        double step;
        for (i = 0; i < NODES; ++i)
            image[i] = 0;
        add_capacity(direction, 1 / time_step, image);
        add_conduction(direction, 1, image);
        hold_heated(image);
        step = square / product(direction, image);
        for (i = 0; i < NODES; ++i) {
            nodes[i].temperature += step * direction[i];
            residual[i] -= step * image[i];
        }
        square = product(residual, residual);
        for (i = 0; i < NODES; ++i)
            direction[i] = residual[i] + square / previous * direction[i];
    }
}

/* A member of all nodes, which lie one behind the other. */
static mox_array of_nodes(double const* first, size_t columns)
{
    mox_array array = mox_float64_array(first, NODES, columns);
    array.row_stride = sizeof(node);
    return array;
}

static mox_status write_mesh(mox_model* model, uint32_t shape)
{
    static uint32_t polylength[ELEMENTS];
    mox_array coordinates = of_nodes(nodes[0].position, 3);
    mox_array connectivity = mox_uint32_array(elements[0], (size_t)ELEMENTS * 4, 1);
    mox_array lengths = mox_uint32_array(polylength, ELEMENTS, 1);
    mox_status status;
    int element;
    for (element = 0; element < ELEMENTS; ++element)
        polylength[element] = 4;
    status =
        mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &coordinates, &shape, 1, NULL, NULL);
    if (status == MOX_OK)
        status = mox_model_add_array(model, NULL, 0, MOX_CONNECTIVITY2, &connectivity, &shape, 1,
                                     NULL, NULL);
    if (status == MOX_OK)
        status =
            mox_model_add_array(model, NULL, 0, MOX_POLYLENGTH2, &lengths, &shape, 1, NULL, NULL);
    return status;
}

static mox_status write_step(mox_model* model, uint32_t shape, int number, mox_steps* steps,
                             mox_attributes* attributes)
{
    mox_array temperature = of_nodes(&nodes[0].temperature, 1);
    char name[32];
    mox_status status;
    sprintf(name, "Step %d", number);
    status = mox_attributes_set_int32(attributes, "StepNumber", MOX_TERMINATED, number);
    if (status == MOX_OK)
        status = mox_attributes_set_double(attributes, "Time", MOX_TERMINATED, number * time_step);
    if (status == MOX_OK)
        status = mox_steps_clear(steps);
    if (status == MOX_OK)
        status = mox_steps_add(steps, name, MOX_TERMINATED, attributes);
    if (status == MOX_OK)
        status = mox_model_add_array(model, "Temperature", MOX_TERMINATED, MOX_RESULT10,
                                     &temperature, &shape, 1, steps, NULL);
    return status;
}

static mox_status open_model(mox_model* model, char const* path, uint32_t* shape)
{
    mox_options* options = NULL;
    mox_status status = mox_options_create(&options);
    if (status == MOX_OK)
        status = mox_options_set_overwrite(options, 1);
    if (status == MOX_OK)
        status = mox_model_save_to(model, path, MOX_TERMINATED, options);
    mox_options_destroy(options);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_ROOT_GROUP, "Plate", MOX_TERMINATED, NULL, NULL);
    if (status == MOX_OK)
        status = mox_model_add_node(model, MOX_SHAPE, "Steel", MOX_TERMINATED, NULL, shape);
    return status;
}

/* Writes each step as soon as it is known: a run that ends early leaves what it has. */
static mox_status solve(mox_model* model, uint32_t shape)
{
    mox_steps* steps = NULL;
    mox_attributes* attributes = NULL;
    mox_status status = mox_steps_create(&steps);
    int number;
    if (status == MOX_OK)
        status = mox_attributes_create(&attributes);
    for (number = 0; status == MOX_OK && number <= STEPS; ++number) {
        if (number > 0)
            advance();
        status = write_step(model, shape, number, steps, attributes);
    }
    mox_attributes_destroy(attributes);
    mox_steps_destroy(steps);
    return status;
}

int main(int argc, char** argv)
{
    mox_model* model = NULL;
    uint32_t shape = 0;
    mox_status status = mox_model_create(&model);
    make_mesh();
    if (status == MOX_OK)
        status = open_model(model, argc > 1 ? argv[1] : "plate.mox", &shape);
    if (status == MOX_OK)
        status = write_mesh(model, shape);
    if (status == MOX_OK)
        status = solve(model, shape);
    if (status == MOX_OK)
        status = mox_model_close(model);
    if (status != MOX_OK)
        fprintf(stderr, "%s\n", mox_last_error());
    mox_model_destroy(model);
    if (status == MOX_OK)
        printf("%.1f K in the middle after %.0f s\n",
               nodes[ROWS / 2 * (COLUMNS + 1) + COLUMNS / 2].temperature, STEPS * time_step);
    return status == MOX_OK ? 0 : 1;
}
