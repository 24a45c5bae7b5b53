/* Stands before the C library's allocation, for whatever is in the process, and lets it fail. */

#include <errno.h>
#include <stddef.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void __libc_free(void* memory);

void* malloc(size_t size);
void* calloc(size_t count, size_t size);
void* realloc(void* memory, size_t size);
void free(void* memory);
void fail_allocations(int ordinal, int is_repeated);
int end_failing(void);
int live_allocations(void);

static int left = 0;
static int repeats = 0;
static int struck = 0;
static int live = 0;

/* The allocation of that number fails, counted from 1, or that and all after it. */
void fail_allocations(int ordinal, int is_repeated)
{
    struck = 0;
    repeats = is_repeated;
    left = ordinal;
}

/* Whether one has failed. */
int end_failing(void)
{
    left = 0;
    return struck;
}

int live_allocations(void)
{
    return live;
}

static int is_to_fail(void)
{
    if (left == 0)
        return 0;
    if (left > 1) {
        --left;
        return 0;
    }
    if (!repeats)
        left = 0;
    struck = 1;
    errno = ENOMEM;
    return 1;
}

static void* counted(void* memory)
{
    live += memory != NULL;
    return memory;
}

void* malloc(size_t size)
{
    return is_to_fail() ? NULL : counted(__libc_malloc(size));
}

void* calloc(size_t count, size_t size)
{
    return is_to_fail() ? NULL : counted(__libc_calloc(count, size));
}

void* realloc(void* memory, size_t size)
{
    if (memory == NULL)
        return malloc(size);
    return is_to_fail() ? NULL : __libc_realloc(memory, size);
}

void free(void* memory)
{
    live -= memory != NULL;
    __libc_free(memory);
}
