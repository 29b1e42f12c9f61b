/* A host's own names, which are names inside the core too. */

int bin = 42, jvm_options_count = 42, processedArgCount = 42, label, version;
int split, process_single_arg, JLI_TraceLauncher;
