// Placeholder entry until the report tool lands in the next commit.
int main() { return 0; }
