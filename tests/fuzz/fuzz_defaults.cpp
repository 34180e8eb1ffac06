// What every target runs with where its command line says nothing else.
#include <string>
#include <vector>

// An input makes thousands of small strings: noting thirty frames for each, and keeping 256 MB of
// freed ones out of use, took more time than what is tested.
extern "C" const char* __asan_default_options() {  // NOLINT: the sanitizer's own name
    return "malloc_context_size=1:quarantine_size_mb=4:thread_local_quarantine_size_kb=512";
}

// libFuzzer has no other place for an option of one target.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    static std::string longest = "-max_len=" + std::to_string(SPELLWICK_LONGEST_INPUT);
    static std::vector<char*> all(*arguments, *arguments + *count);
    // The last of several counts.
    all.insert(all.begin() + 1, longest.data());
    all.push_back(nullptr);
    *count += 1;
    *arguments = all.data();
    return 0;
}
