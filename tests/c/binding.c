/* Makes every call of the binding to C, rightly and wrongly. Is compiled as C99 and as C++11: what
   it says of the header holds in both. Exit status 0 if all holds. */

#include <moxwriter.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

static void expect(int holds, char const* what, int line)
{
    if (!holds) {
        printf("%d: does not hold: %s\n", line, what);
        ++failures;
    }
}

static void expect_status(mox_status found, mox_status expected, char const* what, int line)
{
    if (found != expected) {
        printf("%d: status %d, not %d: %s: %s\n", line, found, expected, what, mox_last_error());
        ++failures;
    }
}

static void expect_text(char const* found, char const* expected, int line)
{
    if (strcmp(found, expected) != 0) {
        printf("%d: \"%s\", not \"%s\"\n", line, found, expected);
        ++failures;
    }
}

/* The line of the failure is that of the call. */
#define EXPECT(condition) expect(condition, #condition, __LINE__)
#define EXPECT_OK(call) expect_status(call, MOX_OK, #call, __LINE__)
#define EXPECT_STATUS(call, status) expect_status(call, status, #call, __LINE__)
#define EXPECT_TEXT(found, expected) expect_text(found, expected, __LINE__)
/* For calls without a model. */
#define EXPECT_REFUSED(call, status, sentence)                                                     \
    do {                                                                                           \
        expect_status(call, status, #call, __LINE__);                                              \
        expect_text(mox_last_error(), sentence, __LINE__);                                         \
    } while (0)
#define EXPECT_MODEL_REFUSED(model, call, status, sentence)                                        \
    do {                                                                                           \
        EXPECT_REFUSED(call, status, sentence);                                                    \
        expect_text(mox_model_error(model), sentence, __LINE__);                                   \
    } while (0)

static size_t const terminated = MOX_TERMINATED;
static char const* const no_handle = "Invalid handle: ";

static int begins_with(char const* text, char const* beginning)
{
    return strncmp(text, beginning, strlen(beginning)) == 0;
}

/* A model without a file, with a root, a shape of the id 3 and nothing else. */
static mox_model* small_model(void)
{
    mox_model* model = NULL;
    uint32_t id = 0;
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_model_save_to(model, "", terminated, NULL));
    EXPECT_OK(mox_model_add_node(model, MOX_ROOT_GROUP, "Root", terminated, NULL, &id));
    EXPECT(id == 1);
    EXPECT_OK(mox_model_add_node(model, MOX_SHAPE, "Shape", terminated, NULL, &id));
    EXPECT(id == 3);
    return model;
}

static void versions_are_told(void)
{
    char text[64];
    sprintf(text, "%d.%d.%d", MOX_VERSION_MAJOR, MOX_VERSION_MINOR, MOX_VERSION_PATCH);
    EXPECT_TEXT(mox_version(), text);
    EXPECT(mox_version_number() ==
           MOX_VERSION_MAJOR * 1000000 + MOX_VERSION_MINOR * 1000 + MOX_VERSION_PATCH);
}

static void each_status_has_a_text_of_its_own(void)
{
    static mox_status const statuses[] = {
        MOX_OK,         MOX_UNKNOWN,         MOX_MISCELLANEOUS, MOX_INVALID_ARGUMENTS,
        MOX_FILE_OPEN,  MOX_FILE_WRITE,      MOX_OUT_OF_BOUNDS, MOX_OVERFLOW,
        MOX_UNDERFLOW,  MOX_KEY_NOT_FOUND,   MOX_MEMORY,        MOX_INVALID_STATE,
        MOX_WRONG_TYPE, MOX_NOT_IMPLEMENTED, MOX_INVALID_HANDLE};
    size_t const count = sizeof statuses / sizeof *statuses;
    size_t first;
    size_t second;
    for (first = 0; first < count; ++first)
        for (second = 0; second < first; ++second)
            EXPECT(strcmp(mox_status_text(statuses[first]), mox_status_text(statuses[second])) !=
                   0);
    EXPECT_TEXT(mox_status_text(-1), "Unknown Exception");
    EXPECT_TEXT(mox_status_text(4), "Unknown Exception");
}

static void nothing_to_return_a_handle_in_is_refused(void)
{
    EXPECT_REFUSED(mox_model_create(NULL), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: nothing to return the model in");
    EXPECT_REFUSED(mox_options_create(NULL), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: nothing to return the set of options in");
    EXPECT_STATUS(mox_attributes_create(NULL), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_properties_create(NULL), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_steps_create(NULL), MOX_INVALID_ARGUMENTS);
}

static void null_can_be_destroyed(void)
{
    EXPECT_OK(mox_model_destroy(NULL));
    EXPECT_OK(mox_options_destroy(NULL));
    EXPECT_OK(mox_attributes_destroy(NULL));
    EXPECT_OK(mox_properties_destroy(NULL));
    EXPECT_OK(mox_steps_destroy(NULL));
}

/* Every call of a model with what is none. */
static void expect_no_model(mox_model* model)
{
    mox_array const array = mox_float32_array(NULL, 0, 1);
    uint32_t id = 7;
    EXPECT_STATUS(mox_model_save_to(model, "", terminated, NULL), MOX_INVALID_HANDLE);
    EXPECT(begins_with(mox_model_error(model), no_handle));
    EXPECT_STATUS(mox_model_save_to_wide(model, L"", terminated, NULL), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_node(model, MOX_GROUP, "a", 1, NULL, &id), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_set_node_data(model, 1, NULL, NULL), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_get_node_id(model, "", 0, NULL, 0, &id), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_get_node_id_by_names(model, NULL, NULL, 0, &id), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_set_current_node_id(model, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_move_to_parent_node(model, &id), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_components(model, NULL, NULL, 0, NULL, 0, &id), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_component_map(model, NULL, NULL, NULL, 0, NULL, 0, &id, NULL),
                  MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, NULL, 0, NULL, NULL),
                  MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_close(model), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_waited_seconds(model, NULL), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_checkpoint(model, NULL), MOX_INVALID_HANDLE);
    EXPECT(id == 7);
}

static void expect_no_builders(mox_options* options, mox_attributes* attributes,
                               mox_properties* properties, mox_steps* steps)
{
    static float const one = 1;
    static int32_t const two = 2;
    EXPECT_STATUS(mox_options_set_overwrite(options, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_text1(options, "", 0), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_text2(options, "", 0), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_text3(options, "", 0), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_encoder(options, MOX_ENCODER_ZLIB), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_threads(options, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_block_size(options, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_options_set_recoverable(options, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_clear(attributes), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_float(attributes, "a", 1, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_double(attributes, "a", 1, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_int32(attributes, "a", 1, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_uint32(attributes, "a", 1, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_int64(attributes, "a", 1, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_set_string(attributes, "a", 1, "b", 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_clear(properties), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_float(properties, MOX_SHININESS, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_double(properties, MOX_SHININESS, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_floats(properties, MOX_SCALE, &one, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_int32(properties, MOX_SHININESS, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_bool(properties, MOX_SHININESS, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_int32s(properties, MOX_SCALE, &two, 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_set_string(properties, MOX_SCALE, "a", 1), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_steps_clear(steps), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_steps_add(steps, "a", 1, NULL), MOX_INVALID_HANDLE);
}

static void null_is_no_handle(void)
{
    expect_no_model(NULL);
    expect_no_builders(NULL, NULL, NULL, NULL);
    EXPECT_REFUSED(mox_model_close(NULL), MOX_INVALID_HANDLE, "Invalid handle: the model is null");
}

static void a_handle_of_another_type_is_none(void)
{
    mox_attributes* attributes = NULL;
    mox_model* model = NULL;
    EXPECT_OK(mox_attributes_create(&attributes));
    EXPECT_OK(mox_model_create(&model));
    expect_no_model((mox_model*)attributes);
    EXPECT_STATUS(mox_model_destroy((mox_model*)attributes), MOX_INVALID_HANDLE);
    expect_no_builders((mox_options*)model, (mox_attributes*)model, (mox_properties*)model,
                       (mox_steps*)model);
    EXPECT_STATUS(mox_steps_destroy((mox_steps*)model), MOX_INVALID_HANDLE);
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_attributes_destroy(attributes));
}

static void a_handle_that_was_destroyed_is_none(void)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    mox_attributes* attributes = NULL;
    mox_properties* properties = NULL;
    mox_steps* steps = NULL;
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_attributes_create(&attributes));
    EXPECT_OK(mox_properties_create(&properties));
    EXPECT_OK(mox_steps_create(&steps));
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_options_destroy(options));
    EXPECT_OK(mox_attributes_destroy(attributes));
    EXPECT_OK(mox_properties_destroy(properties));
    EXPECT_OK(mox_steps_destroy(steps));
    expect_no_model(model);
    expect_no_builders(options, attributes, properties, steps);
    EXPECT_REFUSED(mox_model_destroy(model), MOX_INVALID_HANDLE,
                   "Invalid handle: this is no model, or was destroyed");
    EXPECT_STATUS(mox_options_destroy(options), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_attributes_destroy(attributes), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_properties_destroy(properties), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_steps_destroy(steps), MOX_INVALID_HANDLE);
}

static void handles_beside_the_model_are_checked(void)
{
    mox_model* model = small_model();
    mox_attributes* gone = NULL;
    mox_attributes const* of_paths[1];
    char const* path = "/Root/a";
    mox_array const array = mox_float32_array(NULL, 0, 1);
    uint32_t id = 3;
    EXPECT_OK(mox_attributes_create(&gone));
    EXPECT_OK(mox_attributes_destroy(gone));
    of_paths[0] = gone;
    EXPECT_MODEL_REFUSED(model, mox_model_add_node(model, MOX_GROUP, "a", 1, gone, NULL),
                         MOX_INVALID_HANDLE,
                         "Invalid handle: this is no set of attributes, or was destroyed");
    EXPECT_STATUS(mox_model_set_node_data(model, 1, NULL, gone), MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_set_node_data(model, 1, (mox_properties*)model, NULL),
                  MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, &id, 1, NULL, gone),
                  MOX_INVALID_HANDLE);
    EXPECT_STATUS(
        mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, &id, 1, (mox_steps*)model, NULL),
        MOX_INVALID_HANDLE);
    EXPECT_STATUS(mox_model_add_component_map(model, &path, NULL, of_paths, 1, NULL, 0, NULL, NULL),
                  MOX_INVALID_HANDLE);
    EXPECT_OK(mox_model_close(model));
    EXPECT_STATUS(mox_model_save_to(model, "", 0, (mox_options*)model), MOX_INVALID_HANDLE);
    EXPECT_OK(mox_model_destroy(model));
}

static void null_texts_are_refused(void)
{
    mox_model* model = small_model();
    mox_options* options = NULL;
    mox_attributes* attributes = NULL;
    mox_properties* properties = NULL;
    mox_steps* steps = NULL;
    char const* texts[2] = {"/Root/a", NULL};
    uint32_t ids[2] = {7, 7};
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_attributes_create(&attributes));
    EXPECT_OK(mox_properties_create(&properties));
    EXPECT_OK(mox_steps_create(&steps));
    EXPECT_REFUSED(mox_options_set_text1(options, NULL, 0), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: the text is null");
    EXPECT_STATUS(mox_options_set_text2(options, NULL, terminated), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_options_set_text3(options, NULL, 1), MOX_INVALID_ARGUMENTS);
    EXPECT_REFUSED(mox_attributes_set_float(attributes, NULL, 0, 1), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: the name is null");
    EXPECT_STATUS(mox_attributes_set_double(attributes, NULL, 0, 1), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_attributes_set_int32(attributes, NULL, 0, 1), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_attributes_set_uint32(attributes, NULL, 0, 1), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_attributes_set_int64(attributes, NULL, 0, 1), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_attributes_set_string(attributes, NULL, 0, "a", 1), MOX_INVALID_ARGUMENTS);
    EXPECT_REFUSED(mox_attributes_set_string(attributes, "a", 1, NULL, 0), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: the value is null");
    EXPECT_STATUS(mox_properties_set_string(properties, MOX_SCALE, NULL, 0), MOX_INVALID_ARGUMENTS);
    EXPECT_REFUSED(mox_properties_set_floats(properties, MOX_SCALE, NULL, 3), MOX_INVALID_ARGUMENTS,
                   "Invalid arguments: the values are null");
    EXPECT_STATUS(mox_properties_set_int32s(properties, MOX_SCALE, NULL, 3), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_steps_add(steps, NULL, 0, NULL), MOX_INVALID_ARGUMENTS);
    EXPECT_MODEL_REFUSED(model, mox_model_add_node(model, MOX_GROUP, NULL, 0, NULL, NULL),
                         MOX_INVALID_ARGUMENTS, "Invalid arguments: the name is null");
    EXPECT_STATUS(mox_model_get_node_id(model, NULL, 0, NULL, 0, ids), MOX_INVALID_ARGUMENTS);
    EXPECT_MODEL_REFUSED(model, mox_model_get_node_id_by_names(model, NULL, NULL, 2, ids),
                         MOX_INVALID_ARGUMENTS, "Invalid arguments: the names are null");
    EXPECT_MODEL_REFUSED(model, mox_model_add_components(model, texts, NULL, 2, NULL, 0, ids),
                         MOX_INVALID_ARGUMENTS, "Invalid arguments: path 1 is null");
    EXPECT_STATUS(mox_model_add_component_map(model, texts, NULL, NULL, 2, NULL, 0, ids, NULL),
                  MOX_INVALID_ARGUMENTS);
    EXPECT_MODEL_REFUSED(model, mox_model_get_node_id(model, "/Root/a", terminated, NULL, 0, NULL),
                         MOX_INVALID_ARGUMENTS, "Invalid arguments: nothing to return the id in");
    EXPECT_STATUS(mox_model_get_node_id_by_names(model, NULL, NULL, 0, NULL),
                  MOX_INVALID_ARGUMENTS);
    EXPECT_OK(mox_model_close(model));
    EXPECT_MODEL_REFUSED(model, mox_model_save_to(model, NULL, 0, NULL), MOX_INVALID_ARGUMENTS,
                         "Invalid arguments: the path is null");
    EXPECT_STATUS(mox_model_save_to_wide(model, NULL, 0, NULL), MOX_INVALID_ARGUMENTS);
    EXPECT(ids[0] == 7 && ids[1] == 7);
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_options_destroy(options));
    EXPECT_OK(mox_attributes_destroy(attributes));
    EXPECT_OK(mox_properties_destroy(properties));
    EXPECT_OK(mox_steps_destroy(steps));
}

/* No memory has a text as long as this. */
static void absurd_lengths_are_a_lack_of_memory(void)
{
    mox_attributes* attributes = NULL;
    mox_properties* properties = NULL;
    mox_model* model = small_model();
    char const* name = "a";
    float const one = 1;
    uint32_t id = 7;
    EXPECT_OK(mox_attributes_create(&attributes));
    EXPECT_OK(mox_properties_create(&properties));
    EXPECT_REFUSED(mox_attributes_set_float(attributes, "a", SIZE_MAX - 1, 1), MOX_MEMORY,
                   "Memory allocation error");
    EXPECT_STATUS(mox_properties_set_floats(properties, MOX_SCALE, &one, SIZE_MAX), MOX_MEMORY);
    EXPECT_STATUS(mox_model_get_node_id_by_names(model, &name, NULL, SIZE_MAX, &id), MOX_MEMORY);
    EXPECT_OK(mox_attributes_destroy(attributes));
    EXPECT_OK(mox_properties_destroy(properties));
    EXPECT_OK(mox_model_destroy(model));
}

static void calls_out_of_order_are_refused(void)
{
    mox_model* model = NULL;
    uint32_t id = 7;
    EXPECT_OK(mox_model_create(&model));
    EXPECT_TEXT(mox_model_error(model), "");
    EXPECT_OK(mox_model_close(model));
    EXPECT_MODEL_REFUSED(
        model, mox_model_add_node(model, MOX_ROOT_GROUP, "Root", terminated, NULL, &id),
        MOX_INVALID_STATE, "File not open. saveTo was not called, or the model was closed since");
    EXPECT_STATUS(mox_model_set_node_data(model, 1, NULL, NULL), MOX_INVALID_STATE);
    EXPECT_STATUS(mox_model_set_current_node_id(model, 1), MOX_INVALID_STATE);
    EXPECT_STATUS(mox_model_move_to_parent_node(model, &id), MOX_INVALID_STATE);
    EXPECT_STATUS(mox_model_get_node_id(model, "", 0, NULL, 0, &id), MOX_INVALID_STATE);
    EXPECT(id == 7);
    EXPECT_OK(mox_model_save_to(model, "", 0, NULL));
    EXPECT_STATUS(mox_model_save_to(model, "", 0, NULL), MOX_INVALID_STATE);
    EXPECT(begins_with(mox_model_error(model), "Not Empty"));
    EXPECT_OK(mox_model_destroy(model));
}

static void values_that_are_of_no_type_are_refused(void)
{
    mox_model* model = small_model();
    mox_properties* properties = NULL;
    mox_array array = mox_float32_array(NULL, 0, 1);
    uint32_t id = 3;
    EXPECT_MODEL_REFUSED(
        model, mox_model_add_node(model, 77, "a", 1, NULL, &id), MOX_INVALID_ARGUMENTS,
        "Invalid node type: node \"a\" of type 77 below node 3: only groups and shapes can be "
        "there");
    EXPECT_STATUS(mox_model_add_node(model, -1, "a", 1, NULL, &id), MOX_INVALID_ARGUMENTS);
    EXPECT_OK(mox_properties_create(&properties));
    EXPECT_OK(mox_properties_set_float(properties, -1, 1));
    EXPECT_STATUS(mox_model_set_node_data(model, 1, properties, NULL), MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_model_add_array(model, "a", 1, 31, &array, &id, 1, NULL, NULL),
                  MOX_INVALID_ARGUMENTS);
    EXPECT_STATUS(mox_model_add_array(model, "a", 1, -1, &array, &id, 1, NULL, NULL),
                  MOX_INVALID_ARGUMENTS);
    array.element = 6;
    EXPECT_MODEL_REFUSED(
        model, mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, &id, 1, NULL, NULL),
        MOX_INVALID_ARGUMENTS, "Invalid arguments: 6 is no type of elements");
    array.element = -1;
    EXPECT_STATUS(mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, &id, 1, NULL, NULL),
                  MOX_INVALID_ARGUMENTS);
    EXPECT_OK(mox_properties_destroy(properties));
    EXPECT_OK(mox_model_destroy(model));
}

static mox_status add(mox_model* model, mox_array const* array, size_t id_count)
{
    static uint32_t const ids[1] = {3};
    return mox_model_add_array(model, NULL, 0, MOX_COORDINATES, array, ids, id_count, NULL, NULL);
}

static void arrays_that_can_not_be_are_refused(void)
{
    static float const values[3] = {1, 2, 3};
    mox_model* model = small_model();
    mox_array array = mox_float32_array(values, 1, 3);
    EXPECT_OK(add(model, &array, 1));
    EXPECT_MODEL_REFUSED(model, add(model, NULL, 1), MOX_INVALID_ARGUMENTS,
                         "Invalid arguments: the array is null");
    EXPECT_MODEL_REFUSED(
        model, mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &array, NULL, 5, NULL, NULL),
        MOX_INVALID_ARGUMENTS, "Invalid arguments: 5 ids, but a null pointer");
    EXPECT_OK(mox_model_add_array(model, NULL, 0, MOX_COORDINATES, &array, NULL, 0, NULL, NULL));
    EXPECT_MODEL_REFUSED(model, add(model, &array, 2147483648U), MOX_OVERFLOW,
                         "Overflow error: 2147483648 ids, the format counts up to 2147483647");
    EXPECT_STATUS(add(model, &array, SIZE_MAX), MOX_OVERFLOW);
    array.rows = SIZE_MAX;
    EXPECT_STATUS(add(model, &array, 1), MOX_OVERFLOW);
    array = mox_float32_array(NULL, 1, 3);
    EXPECT_MODEL_REFUSED(model, add(model, &array, 1), MOX_INVALID_ARGUMENTS,
                         "Invalid arguments: Coordinates: 1 rows, but a null pointer");
    array.columns = SIZE_MAX;
    EXPECT_STATUS(add(model, &array, 1), MOX_OVERFLOW);
    array = mox_float32_array(NULL, 0, 3);
    EXPECT_OK(add(model, &array, 1));
    EXPECT_OK(mox_model_destroy(model));
}

static void arrays_are_described_as_they_lie(void)
{
    static double const doubles[6] = {0};
    static int64_t const integers[6] = {0};
    mox_array const of_doubles = mox_float64_array(doubles, 2, 3);
    EXPECT(of_doubles.data == doubles && of_doubles.element == MOX_FLOAT64);
    EXPECT(of_doubles.rows == 2 && of_doubles.columns == 3);
    EXPECT(of_doubles.row_stride == 24 && of_doubles.column_stride == 8);
    EXPECT(mox_int32_array(NULL, 1, 3).element == MOX_INT32);
    EXPECT(mox_int32_array(NULL, 1, 3).row_stride == 12);
    EXPECT(mox_uint32_array(NULL, 1, 3).element == MOX_UINT32);
    EXPECT(mox_int64_array(integers, 1, 3).element == MOX_INT64);
    EXPECT(mox_int64_array(integers, 1, 3).column_stride == 8);
    EXPECT(mox_uint64_array(NULL, 1, 3).element == MOX_UINT64);
}

static void texts_end_where_it_is_said(void)
{
    mox_model* model = small_model();
    char const* const names[2] = {"Root!", "Part"};
    size_t const lengths[2] = {4, MOX_TERMINATED};
    uint32_t part = 0;
    uint32_t id = 0;
    EXPECT_OK(mox_model_set_current_node_id(model, 1));
    EXPECT_OK(mox_model_add_node(model, MOX_GROUP, "Part of it", 4, NULL, &part));
    EXPECT_OK(mox_model_get_node_id(model, "/Root/Part", terminated, NULL, 0, &id));
    EXPECT(id == part);
    EXPECT_OK(mox_model_get_node_id(model, "::Root::Party", 12, "::::", 2, &id));
    EXPECT(id == part);
    EXPECT_OK(mox_model_get_node_id_by_names(model, names, lengths, 2, &id));
    EXPECT(id == part);
    EXPECT_OK(mox_model_get_node_id_by_names(model, names, NULL, 2, &id));
    EXPECT(id == 0);
    EXPECT_OK(mox_model_add_node(model, MOX_GROUP, "zero\0inside", 11, NULL, &part));
    EXPECT_OK(mox_model_get_node_id(model, "/Root/zero\0inside", 17, "/", 1, &id));
    EXPECT(id == part);
    EXPECT_OK(mox_model_destroy(model));
}

static void results_may_be_left_out(void)
{
    mox_model* model = small_model();
    char const* const paths[2] = {"/Root/b", "/Root/a"};
    uint32_t ids[2] = {0, 0};
    size_t count = 0;
    EXPECT_OK(mox_model_add_node(model, MOX_GROUP, "a", 1, NULL, NULL));
    EXPECT_OK(mox_model_move_to_parent_node(model, NULL));
    EXPECT_OK(mox_model_add_components(model, paths, NULL, 2, NULL, 0, NULL));
    EXPECT_OK(mox_model_add_component_map(model, paths, NULL, NULL, 2, NULL, 0, NULL, NULL));
    EXPECT_OK(mox_model_add_component_map(model, paths, NULL, NULL, 2, "/", 1, ids, &count));
    EXPECT(count == 2 && ids[0] == 8 && ids[1] == 6);
    EXPECT_OK(mox_model_destroy(model));
}

static void of_equal_paths_one_is_added(void)
{
    mox_model* model = small_model();
    char const* const paths[3] = {"/Root/b", "/Root/a", "/Root/b"};
    uint32_t ids[3] = {7, 7, 7};
    size_t count = 0;
    EXPECT_OK(mox_model_add_component_map(model, paths, NULL, NULL, 3, NULL, 0, ids, &count));
    EXPECT(count == 2 && ids[2] == 7);
    EXPECT_OK(mox_model_destroy(model));
}

static void what_was_cleared_is_gone(void)
{
    mox_model* model = small_model();
    mox_properties* properties = NULL;
    mox_attributes* attributes = NULL;
    EXPECT_OK(mox_properties_create(&properties));
    EXPECT_OK(mox_properties_set_bool(properties, MOX_UNSUPPORTED, 1));
    EXPECT_STATUS(mox_model_set_node_data(model, 3, properties, NULL), MOX_WRONG_TYPE);
    EXPECT_OK(mox_properties_clear(properties));
    EXPECT_OK(mox_model_set_node_data(model, 3, properties, NULL));
    EXPECT_OK(mox_attributes_create(&attributes));
    EXPECT_OK(mox_attributes_clear(attributes));
    EXPECT_OK(mox_properties_destroy(properties));
    EXPECT_OK(mox_attributes_destroy(attributes));
    EXPECT_OK(mox_model_destroy(model));
}

static void models_keep_their_own_errors(void)
{
    mox_model* first = small_model();
    mox_model* second = small_model();
    EXPECT_STATUS(mox_model_set_current_node_id(first, 8), MOX_OUT_OF_BOUNDS);
    EXPECT_STATUS(mox_model_set_current_node_id(second, 9), MOX_OUT_OF_BOUNDS);
    EXPECT_TEXT(mox_model_error(first),
                "Out of bounds error: no node has the id 8; the last one is 3");
    EXPECT_TEXT(mox_last_error(), "Out of bounds error: no node has the id 9; the last one is 3");
    EXPECT_OK(mox_model_set_current_node_id(first, 1));
    EXPECT_TEXT(mox_model_error(first),
                "Out of bounds error: no node has the id 8; the last one is 3");
    EXPECT_OK(mox_model_destroy(first));
    EXPECT_OK(mox_model_destroy(second));
}

/* The error of a model has no bound, that of a thread has. */
static void long_sentences_are_kept_whole(void)
{
    static char name[3001];
    mox_model* model = small_model();
    memset(name, 'n', sizeof name - 1);
    EXPECT_STATUS(mox_model_add_node(model, 77, name, terminated, NULL, NULL),
                  MOX_INVALID_ARGUMENTS);
    EXPECT(strlen(mox_model_error(model)) > 3000);
    EXPECT(strlen(mox_last_error()) == 1023);
    EXPECT_OK(mox_model_destroy(model));
}

static void existing_files_are_kept_unless_asked_for(char const* path)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_model_save_to(model, path, terminated, options));
    EXPECT_OK(mox_model_close(model));
    EXPECT_STATUS(mox_model_save_to(model, path, terminated, options), MOX_FILE_OPEN);
    EXPECT(begins_with(mox_model_error(model), "File exists. "));
    EXPECT_OK(mox_model_close(model));
    EXPECT_OK(mox_options_set_overwrite(options, 1));
    EXPECT_OK(mox_options_set_text1(options, "program", terminated));
    EXPECT_OK(mox_model_save_to(model, path, terminated, options));
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_options_destroy(options));
}

static void an_encoder_can_be_chosen(void)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_options_set_encoder(options, 9));
    EXPECT_STATUS(mox_model_save_to(model, "", 0, options), MOX_INVALID_ARGUMENTS);
    EXPECT(strstr(mox_model_error(model), "9, and this library has ") != NULL);
    EXPECT_OK(mox_options_set_encoder(options, MOX_ENCODER_ZLIB));
    EXPECT_OK(mox_model_save_to(model, "", 0, options));
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_options_destroy(options));
}

static long size_of(char const* path)
{
    FILE* file = fopen(path, "rb");
    long size = -1;
    if (file != NULL && fseek(file, 0, SEEK_END) == 0)
        size = ftell(file);
    if (file != NULL)
        fclose(file);
    return size;
}

static void write_ids(char const* path, mox_options const* options)
{
    static uint32_t ids[500];
    mox_array const array = mox_uint32_array(ids, sizeof ids / sizeof *ids, 1);
    mox_model* model = NULL;
    uint32_t shape = 0;
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_model_save_to(model, path, terminated, options));
    EXPECT_OK(mox_model_add_node(model, MOX_ROOT_GROUP, "Root", terminated, NULL, NULL));
    EXPECT_OK(mox_model_add_node(model, MOX_SHAPE, "Shape", terminated, NULL, &shape));
    EXPECT_OK(mox_model_add_array(model, NULL, 0, MOX_NODE_IDS, &array, &shape, 1, NULL, NULL));
    EXPECT_OK(mox_model_add_array(model, "Again", 5, MOX_NODE_IDS, &array, &shape, 1, NULL, NULL));
    EXPECT_OK(mox_model_close(model));
    EXPECT_OK(mox_model_destroy(model));
}

static void threads_and_blocks_can_be_chosen(char const* path)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    long size = 0;
    double waited = -1;
    int on_disk = -1;
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_options_set_overwrite(options, 1));
    write_ids(path, options);
    size = size_of(path);
    EXPECT_OK(mox_options_set_threads(options, 2));
    EXPECT_OK(mox_options_set_block_size(options, 1000));
    write_ids(path, options);
    /* One more block. */
    EXPECT(size > 0 && size_of(path) > size);
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_options_set_threads(options, 2000));
    EXPECT_STATUS(mox_model_save_to(model, "", 0, options), MOX_INVALID_ARGUMENTS);
    EXPECT(strstr(mox_model_error(model), "asks for 2000 threads") != NULL);
    EXPECT_OK(mox_model_waited_seconds(model, &waited));
    EXPECT(waited == 0);
    EXPECT_OK(mox_model_waited_seconds(model, NULL));
    EXPECT_OK(mox_options_set_threads(options, -1));
    EXPECT_OK(mox_options_set_block_size(options, 4294967295U));
    EXPECT_STATUS(mox_model_save_to(model, "", 0, options), MOX_INVALID_ARGUMENTS);
    EXPECT(strstr(mox_model_error(model), "asks for blocks of 4294967295 bytes") != NULL);
    EXPECT_OK(mox_options_set_block_size(options, 0));
    EXPECT_OK(mox_model_save_to(model, "", 0, options));
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_model_create(&model));
    EXPECT_STATUS(mox_model_checkpoint(model, &on_disk), MOX_INVALID_STATE);
    EXPECT_OK(mox_options_set_recoverable(options, 0));
    EXPECT_OK(mox_model_save_to(model, path, MOX_TERMINATED, options));
    EXPECT_OK(mox_model_checkpoint(model, &on_disk));
    EXPECT(on_disk == 0);
    EXPECT_OK(mox_model_close(model));
    EXPECT_OK(mox_options_set_recoverable(options, 1));
    EXPECT_OK(mox_model_save_to(model, path, MOX_TERMINATED, options));
    EXPECT_OK(mox_model_checkpoint(model, &on_disk));
    EXPECT(on_disk == 1);
    EXPECT_OK(mox_model_destroy(model));
    EXPECT_OK(mox_options_destroy(options));
}

/* Destroying an open model closes it; what the device refuses then is reported, and all is gone. */
static void destroying_reports_what_closing_failed_at(void)
{
    mox_model* model = NULL;
    mox_options* options = NULL;
    EXPECT_OK(mox_options_create(&options));
    EXPECT_OK(mox_options_set_overwrite(options, 1));
    EXPECT_OK(mox_model_create(&model));
    EXPECT_OK(mox_model_save_to(model, "/dev/full", terminated, options));
    EXPECT_OK(mox_model_add_node(model, MOX_ROOT_GROUP, "Root", terminated, NULL, NULL));
    EXPECT_STATUS(mox_model_destroy(model), MOX_FILE_WRITE);
    EXPECT(strlen(mox_last_error()) > 0);
    EXPECT_STATUS(mox_model_close(model), MOX_INVALID_HANDLE);
    EXPECT_OK(mox_options_destroy(options));
}

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    remove(argv[1]);
    EXPECT_TEXT(mox_last_error(), "");
    versions_are_told();
    each_status_has_a_text_of_its_own();
    nothing_to_return_a_handle_in_is_refused();
    null_can_be_destroyed();
    null_is_no_handle();
    a_handle_of_another_type_is_none();
    a_handle_that_was_destroyed_is_none();
    handles_beside_the_model_are_checked();
    null_texts_are_refused();
    absurd_lengths_are_a_lack_of_memory();
    calls_out_of_order_are_refused();
    values_that_are_of_no_type_are_refused();
    arrays_that_can_not_be_are_refused();
    arrays_are_described_as_they_lie();
    texts_end_where_it_is_said();
    results_may_be_left_out();
    of_equal_paths_one_is_added();
    what_was_cleared_is_gone();
    models_keep_their_own_errors();
    long_sentences_are_kept_whole();
    existing_files_are_kept_unless_asked_for(argv[1]);
    an_encoder_can_be_chosen();
    threads_and_blocks_can_be_chosen(argv[1]);
    destroying_reports_what_closing_failed_at();
    return failures == 0 ? 0 : 1;
}
