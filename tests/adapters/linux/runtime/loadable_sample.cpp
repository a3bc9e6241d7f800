// Opened by the loader's test.

extern "C" __attribute__((visibility("default"))) int loadableSampleAnswer() {
  return 42;
}
