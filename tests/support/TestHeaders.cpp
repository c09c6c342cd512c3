// Exists for its precompiled headers, which the tests share.
int main() {}
