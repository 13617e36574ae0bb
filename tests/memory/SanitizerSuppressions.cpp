// What is not ours: SimpleIni keeps its copy of a file where memory fails while it parses it.

extern "C" {

__attribute__((visibility("default"))) const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:CSimpleIniTempl*LoadData\n";
}

}  // extern "C"
