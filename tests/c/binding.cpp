// The same in C++: the header is for both.
#include "binding.c"
