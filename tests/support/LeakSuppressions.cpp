// The leak checker asks for this by name. Two tests show what the arrays of images and of matrices
// leave allocated on purpose; nothing else may leak.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:ArrayForReplaceToLeaveAnElement\n"
         "leak:FailedClonesPassToTheCaller\n";
}
