#include "core/jlp_vars.h"

const int SUCCESS = 0;
const int FAILURE = -1;

const char file_separator = '\\';
const char path_separator = ';';
const char *const file_separator_str = "\\";

const char *const slash_exe_name = "\\java.exe";
const char *const bin = "\\bin";
const char *const jre_bin = "\\jre\\bin";
const char *const slash_quorvel_jar = "\\quorvel.jar";
const char *const jni_lib_path = "\\jni\\qvljni.dll";

FILE *LOG_FILE_FD = nullptr;

const char *os_name = nullptr;
int is_native_invocation = 0;
int native_jvm_bits = -1;
int is_host_java_9_plus = 0;
int is_guest_java_9_plus = 0;
int use_advanced_launch_mode = 1;
int is_transparent = 0;
int rewrites_arguments = 0;
int quotes_arguments_later = 0;

char *executable_dir = nullptr;
char *bin_dir = nullptr;
char *launcher_home = nullptr;
char *container_home = nullptr;
char *jvm_home = nullptr;
char *quorvel_home = nullptr;

char *launch_mode = nullptr;
char *launcher_path_arg = nullptr;
char *rule_file = nullptr;
char *rule_file_arg = nullptr;
char *quorvel_properties_file = nullptr;
char *quorvel_properties_arg = nullptr;
char *quorvel_library_path = nullptr;
char *allow_vm_properties_option = nullptr;
char *new_mem_val_as_str = nullptr;

JLI_List allow_vm_properties_loaded = nullptr;
JLI_List ignore_properties_loaded = nullptr;
int is_taking_container_options = 0;

// The counts stand together and not beside their arrays: a start that fills few of these touches as
// few pages.
int non_path_options_count = 0;
int allow_vm_properties_count = 0;
int ignore_properties_count = 0;
int jvm_options_count = 0;
int container_options_count = 0;
int processedArgCount = 0;
int lhs_count = 0;
int rhs_count = 0;
int newPathListCount = 0;
int updated_options_for_var_count = 0;
int options_for_quorvel_guest_var_count = 0;

char *non_path_options_array[OPTION_SLOTS];
char *allow_vm_properties_array[OPTION_SLOTS];
char *ignore_properties_array[OPTION_SLOTS];
char *jvm_options_array[OPTION_SLOTS];
char *container_options_array[OPTION_SLOTS];
char *processedArg[ARGUMENT_SLOTS];
char *lhs[ARGUMENT_SLOTS];
char *rhs[ARGUMENT_SLOTS];
char *newPathList[ARGUMENT_SLOTS];
char *path_component[COMPONENT_SLOTS];
char *updated_options_for_var[VARIABLE_SLOTS];
char *options_for_quorvel_guest_var[VARIABLE_SLOTS];
