/* Plays sequences through the binding to C. README.md says what they look like. */

#include <moxwriter.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum
{
    MODELS = 3,
    LONGEST_LINE = 200000,
    MOST_VALUES = 64
};

static void demand(int holds, char const* what)
{
    if (!holds) {
        fprintf(stderr, "%s\n", what);
        exit(1);
    }
}

/* What a line needs until its end. */

static void* allocated[4096];
static size_t allocated_count = 0;

static void* allocate(size_t size)
{
    void* memory = malloc(size == 0 ? 1 : size);
    demand(memory != NULL && allocated_count < sizeof allocated / sizeof *allocated, "memory");
    allocated[allocated_count++] = memory;
    return memory;
}

static void release_all(void)
{
    while (allocated_count > 0)
        free(allocated[--allocated_count]);
}

/* The words of a line. */

static char* rest;

typedef struct text
{
    char const* bytes;
    size_t length;
} text;

static char* next_word(void)
{
    char* word = rest;
    char* end = strchr(rest, ' ');
    demand(*word != '\0', "a line is too short");
    rest = end == NULL ? rest + strlen(rest) : end + 1;
    if (end != NULL)
        *end = '\0';
    return word;
}

static long long next_number(void)
{
    return strtoll(next_word(), NULL, 10);
}

static size_t next_count(void)
{
    return (size_t)next_number();
}

static float next_float(void)
{
    uint32_t bits = (uint32_t)strtoul(next_word(), NULL, 16);
    float value;
    memcpy(&value, &bits, sizeof value);
    return value;
}

static double next_double(void)
{
    uint64_t bits = strtoull(next_word(), NULL, 16);
    double value;
    memcpy(&value, &bits, sizeof value);
    return value;
}

static int digit(char letter)
{
    return letter <= '9' ? letter - '0' : letter - 'a' + 10;
}

/* Null for none. */
static text next_text(void)
{
    char const* word = next_word();
    text result = {NULL, 0};
    char* bytes;
    size_t index;
    if (*word == '-')
        return result;
    result.length = strlen(word) / 2;
    bytes = (char*)allocate(result.length);
    for (index = 0; index < result.length; ++index)
        bytes[index] = (char)(digit(word[2 * index + 1]) * 16 + digit(word[2 * index + 2]));
    result.bytes = bytes;
    return result;
}

static int next_is(char const* word)
{
    return strcmp(next_word(), word) == 0;
}

typedef struct texts
{
    char const** bytes;
    size_t* lengths;
    size_t count;
} texts;

static texts next_texts(void)
{
    texts result;
    size_t index;
    result.count = next_count();
    result.bytes = (char const**)allocate(result.count * sizeof *result.bytes);
    result.lengths = (size_t*)allocate(result.count * sizeof *result.lengths);
    for (index = 0; index < result.count; ++index) {
        text one = next_text();
        result.bytes[index] = one.bytes;
        result.lengths[index] = one.length;
    }
    return result;
}

/* What lines that make no call have said. */

static mox_options* options;
static mox_attributes* attributes;
static mox_properties* properties;
static mox_steps* steps;
static mox_array array;
static char* array_bytes = NULL;

static void succeed(mox_status status)
{
    demand(status == MOX_OK, mox_last_error());
}

static void read_options(void)
{
    text one;
    succeed(mox_options_set_overwrite(options, (int)next_number()));
    one = next_text();
    succeed(mox_options_set_text1(options, one.bytes, one.length));
    one = next_text();
    succeed(mox_options_set_text2(options, one.bytes, one.length));
    one = next_text();
    succeed(mox_options_set_text3(options, one.bytes, one.length));
    succeed(mox_options_set_threads(options, (int)next_number()));
    succeed(mox_options_set_block_size(options, (uint64_t)next_number()));
}

static void read_attribute(mox_attributes* to)
{
    text name = next_text();
    char const* type = next_word();
    if (strcmp(type, "float") == 0)
        succeed(mox_attributes_set_float(to, name.bytes, name.length, next_float()));
    else if (strcmp(type, "double") == 0)
        succeed(mox_attributes_set_double(to, name.bytes, name.length, next_double()));
    else if (strcmp(type, "int") == 0)
        succeed(mox_attributes_set_int32(to, name.bytes, name.length, (int32_t)next_number()));
    else if (strcmp(type, "unsigned") == 0)
        succeed(mox_attributes_set_uint32(to, name.bytes, name.length, (uint32_t)next_number()));
    else if (strcmp(type, "long") == 0)
        succeed(mox_attributes_set_int64(to, name.bytes, name.length, next_number()));
    else {
        text value = next_text();
        succeed(mox_attributes_set_string(to, name.bytes, name.length, value.bytes, value.length));
    }
}

static void read_attributes(mox_attributes* to)
{
    size_t left;
    succeed(mox_attributes_clear(to));
    for (left = next_count(); left > 0; --left)
        read_attribute(to);
}

static void read_floats(mox_property_type type)
{
    size_t count = next_count();
    float* values = (float*)allocate(count * sizeof *values);
    size_t index;
    for (index = 0; index < count; ++index)
        values[index] = next_float();
    succeed(mox_properties_set_floats(properties, type, values, count));
}

static void read_ints(mox_property_type type)
{
    size_t count = next_count();
    int32_t* values = (int32_t*)allocate(count * sizeof *values);
    size_t index;
    for (index = 0; index < count; ++index)
        values[index] = (int32_t)next_number();
    succeed(mox_properties_set_int32s(properties, type, values, count));
}

static void read_property(void)
{
    mox_property_type type = (mox_property_type)next_number();
    char const* form = next_word();
    if (strcmp(form, "float") == 0)
        succeed(mox_properties_set_float(properties, type, next_float()));
    else if (strcmp(form, "double") == 0)
        succeed(mox_properties_set_double(properties, type, next_double()));
    else if (strcmp(form, "int") == 0)
        succeed(mox_properties_set_int32(properties, type, (int32_t)next_number()));
    else if (strcmp(form, "bool") == 0)
        succeed(mox_properties_set_bool(properties, type, (int)next_number()));
    else if (strcmp(form, "floats") == 0)
        read_floats(type);
    else if (strcmp(form, "ints") == 0)
        read_ints(type);
    else {
        text value = next_text();
        succeed(mox_properties_set_string(properties, type, value.bytes, value.length));
    }
}

static void read_properties(void)
{
    size_t left;
    succeed(mox_properties_clear(properties));
    for (left = next_count(); left > 0; --left)
        read_property();
}

static void read_steps(void)
{
    mox_attributes* of_step = NULL;
    size_t left;
    succeed(mox_attributes_create(&of_step));
    succeed(mox_steps_clear(steps));
    for (left = next_count(); left > 0; --left) {
        text name = next_text();
        read_attributes(of_step);
        succeed(mox_steps_add(steps, name.bytes, name.length, of_step));
    }
    succeed(mox_attributes_destroy(of_step));
}

static void read_array(void)
{
    static char const* const names[] = {"float32", "float64", "int32", "uint32", "int64", "uint64"};
    char const* element = next_word();
    size_t offset;
    text bytes;
    for (array.element = 0; strcmp(names[array.element], element) != 0;)
        ++array.element;
    array.rows = next_count();
    array.columns = next_count();
    array.row_stride = (ptrdiff_t)next_number();
    array.column_stride = (ptrdiff_t)next_number();
    offset = next_count();
    bytes = next_text();
    free(array_bytes);
    array_bytes = (char*)malloc(bytes.length + 1);
    demand(array_bytes != NULL, "memory");
    memcpy(array_bytes, bytes.bytes, bytes.length);
    array.data = array_bytes + offset;
}

static long long sequence = 0;
static long long calls = 0;

static void begin_sequence(void)
{
    sequence = next_number();
    calls = 0;
    succeed(mox_options_destroy(options));
    succeed(mox_options_create(&options));
    succeed(mox_attributes_clear(attributes));
    succeed(mox_properties_clear(properties));
    succeed(mox_steps_clear(steps));
    array = mox_float32_array(NULL, 0, 1);
}

static void prepare(char const* what)
{
    if (strcmp(what, "sequence") == 0)
        begin_sequence();
    else if (strcmp(what, "options") == 0)
        read_options();
    else if (strcmp(what, "attributes") == 0)
        read_attributes(attributes);
    else if (strcmp(what, "properties") == 0)
        read_properties();
    else if (strcmp(what, "steps") == 0)
        read_steps();
    else {
        demand(strcmp(what, "array") == 0, "no such line");
        read_array();
    }
}

/* Calls. */

static mox_model* models[MODELS];
static mox_model** model;
static uint32_t values[MOST_VALUES];
static size_t value_count;

static mox_options const* next_options(void)
{
    return next_is("given") ? options : NULL;
}

static mox_attributes const* next_attributes(void)
{
    return next_is("given") ? attributes : NULL;
}

static mox_status save(void)
{
    text path = next_text();
    return mox_model_save_to(*model, path.bytes, path.length, next_options());
}

static mox_status save_wide(void)
{
    text path = next_text();
    wchar_t* wide = (wchar_t*)allocate(path.length * sizeof *wide);
    size_t index;
    for (index = 0; index < path.length; ++index)
        wide[index] = (wchar_t)path.bytes[index];
    return mox_model_save_to_wide(*model, wide, path.length, next_options());
}

static mox_status add_node(void)
{
    mox_node_type type = (mox_node_type)next_number();
    text name = next_text();
    value_count = 1;
    return mox_model_add_node(*model, type, name.bytes, name.length, next_attributes(), values);
}

static mox_status set_node_data(void)
{
    uint32_t id = (uint32_t)next_number();
    mox_properties const* given = next_is("given") ? properties : NULL;
    return mox_model_set_node_data(*model, id, given, next_attributes());
}

static mox_status get_node_id(void)
{
    text path = next_text();
    text separator = next_text();
    value_count = 1;
    return mox_model_get_node_id(*model, path.bytes, path.length, separator.bytes, separator.length,
                                 values);
}

static mox_status get_node_id_by_names(void)
{
    texts names = next_texts();
    value_count = 1;
    return mox_model_get_node_id_by_names(*model, names.bytes, names.lengths, names.count, values);
}

static mox_status move_to_parent_node(void)
{
    value_count = 1;
    return mox_model_move_to_parent_node(*model, values);
}

static mox_status add_components(int is_map)
{
    text separator = next_text();
    texts paths = next_texts();
    size_t count = paths.count;
    mox_status status;
    demand(count < MOST_VALUES, "too many paths");
    if (is_map) {
        mox_attributes const** of_paths =
            (mox_attributes const**)allocate(count * sizeof *of_paths);
        size_t index;
        for (index = 0; index < count; ++index)
            of_paths[index] = attributes;
        status =
            mox_model_add_component_map(*model, paths.bytes, paths.lengths, of_paths, paths.count,
                                        separator.bytes, separator.length, values + 1, &count);
    } else
        status = mox_model_add_components(*model, paths.bytes, paths.lengths, paths.count,
                                          separator.bytes, separator.length, values + 1);
    values[0] = (uint32_t)count;
    value_count = 1 + count;
    return status;
}

static mox_status add_array(void)
{
    text name = next_text();
    mox_dataset_type type = (mox_dataset_type)next_number();
    mox_steps const* given_steps = next_is("given") ? steps : NULL;
    mox_attributes const* given_attributes = next_attributes();
    size_t count = next_count();
    uint32_t* ids = (uint32_t*)allocate(count * sizeof *ids);
    size_t index;
    for (index = 0; index < count; ++index)
        ids[index] = (uint32_t)next_number();
    return mox_model_add_array(*model, name.bytes, name.length, type, &array, ids, count,
                               given_steps, given_attributes);
}

static mox_status run(char const* call)
{
    if (strcmp(call, "new") == 0)
        return mox_model_create(model);
    if (strcmp(call, "save_to") == 0)
        return save();
    if (strcmp(call, "save_to_wide") == 0)
        return save_wide();
    if (strcmp(call, "add_node") == 0)
        return add_node();
    if (strcmp(call, "set_node_data") == 0)
        return set_node_data();
    if (strcmp(call, "get_node_id") == 0)
        return get_node_id();
    if (strcmp(call, "get_node_id_by_names") == 0)
        return get_node_id_by_names();
    if (strcmp(call, "set_current_node_id") == 0)
        return mox_model_set_current_node_id(*model, (uint32_t)next_number());
    if (strcmp(call, "move_to_parent_node") == 0)
        return move_to_parent_node();
    if (strcmp(call, "add_components") == 0)
        return add_components(0);
    if (strcmp(call, "add_component_map") == 0)
        return add_components(1);
    if (strcmp(call, "add_array") == 0)
        return add_array();
    if (strcmp(call, "close") == 0)
        return mox_model_close(*model);
    demand(strcmp(call, "destroy") == 0, "no such call");
    return mox_model_destroy(*model);
}

static void print_sentence(char const* sentence)
{
    for (; *sentence != '\0'; ++sentence) {
        unsigned char byte = (unsigned char)*sentence;
        if (byte >= 0x20 && byte <= 0x7E && byte != '\\')
            putchar(byte);
        else
            printf("\\x%02x", byte);
    }
}

static void make_call(int number, char const* call)
{
    mox_status status;
    size_t index;
    demand(number < MODELS, "no such model");
    model = &models[number];
    value_count = 0;
    status = run(call);
    printf("%lld %lld %d %s %d", sequence, ++calls, number, call, status);
    if (status == MOX_OK)
        for (index = 0; index < value_count; ++index)
            printf(" %lu", (unsigned long)values[index]);
    else {
        putchar(' ');
        print_sentence(mox_model_error(*model));
    }
    putchar('\n');
}

static void play(char* line)
{
    char* first;
    line[strcspn(line, "\n")] = '\0';
    rest = line;
    first = next_word();
    if (*first >= '0' && *first <= '9')
        make_call(*first - '0', next_word());
    else
        prepare(first);
    release_all();
}

int main(int argc, char** argv)
{
    static char line[LONGEST_LINE];
    FILE* file;
    demand(argc == 2, "play_c SEQUENCES");
    file = fopen(argv[1], "rb");
    demand(file != NULL, "the sequences can't be opened");
    succeed(mox_options_create(&options));
    succeed(mox_attributes_create(&attributes));
    succeed(mox_properties_create(&properties));
    succeed(mox_steps_create(&steps));
    while (fgets(line, sizeof line, file) != NULL)
        play(line);
    demand(feof(file), "the sequences can't be read");
    fclose(file);
    free(array_bytes);
    succeed(mox_steps_destroy(steps));
    succeed(mox_properties_destroy(properties));
    succeed(mox_attributes_destroy(attributes));
    succeed(mox_options_destroy(options));
    return 0;
}
