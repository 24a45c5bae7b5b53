// Is compiled for its precompiled header only.
int main() {}
