namespace { [[maybe_unused]] int unused; }
