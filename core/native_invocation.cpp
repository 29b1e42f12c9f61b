#include "core/native_invocation.h"

#include <cctype>
#include <span>

#include "core/configuration.h"
#include "core/java_versions.h"
#include "core/jlp_vars.h"
#include "core/rewriting/shared_disk_queries.h"
#include "core/settings.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/arg_bookkeeping.h"
#include "jli/ending.h"
#include "jli/kept.h"
#include "jli/trace.h"

namespace {

// The texts that the last configuration has brought. A host may have put its own in the place of
// one: that is left alone.
struct loaded_text {
    char **slot, *text;
};
loaded_text loaded_texts[2 * SETTING_COUNT + 2];
size_t loaded_text_count = 0;

void note_text(char **slot) {
    if (slot != nullptr) {
        loaded_texts[loaded_text_count++] = {slot, *slot};
    }
}

JLI_List copy_entries(char *const *entries, int count) {
    JLI_List copies = JLI_List_new(static_cast<size_t>(count) + 1);
    for (int i = 0; i < count; i++) {
        JLI_List_add(copies, JLI_StringDup(entries[i]));
    }
    return copies;
}

void restore_entries(char **entries, JLI_List copies) {
    for (size_t i = 0; copies != nullptr && i < copies->size; i++) {
        if (entries[i] == nullptr) {
            entries[i] = JLI_StringDup(copies->elements[i]);
        }
    }
}

void note_configuration() {
    note_text(&new_mem_val_as_str);
    note_text(&launcher_path_arg);
    for (const setting &row : SETTINGS) {
        note_text(row.text);
        note_text(row.property == nullptr ? nullptr : row.property->argument);
    }
    allow_vm_properties_loaded = copy_entries(allow_vm_properties_array, allow_vm_properties_count);
    ignore_properties_loaded = copy_entries(ignore_properties_array, ignore_properties_count);
}

void release_configuration() {
    reset_jlp_for_native_invocation();
    for (const loaded_text &each : std::span(loaded_texts, loaded_text_count)) {
        if (*each.slot == each.text) {
            release_text(each.slot);
        }
    }
    loaded_text_count = 0;
    for (const setting &row : SETTINGS) {
        if (row.list != nullptr) {
            release_entries(row.list->slots, row.list->count);
        }
    }
    for (JLI_List *list : {&allow_vm_properties_loaded, &ignore_properties_loaded}) {
        JLI_List_free(*list);
        *list = nullptr;
    }
}

} // namespace

void initialize_jlp_for_native_invocation(const char *library_path, int32_t) {
    native_jvm_bits = 64;
    says_faults = 1;
    init_launcher_home_from_library_path(library_path);
    if (loaded_text_count != 0) {
        release_configuration();
    }
    load_config_file();
    note_configuration();
    init_host_and_guest_versions();
}

void init_launcher_home_from_library_path(const char *library_path) {
    const text_ptr lower_case = copy_text(library_path);
    for (char *c = lower_case.get(); *c != '\0'; c++) {
        *c = static_cast<char>(tolower(static_cast<unsigned char>(*c)));
    }
    const size_t length = std::string_view(lower_case.get()).rfind(jni_lib_path);
    if (length == std::string_view::npos) {
        end_with_error(1,
                       format_text("Error: failed to identify launcher_home in library path: %s\n",
                                   library_path));
    }
    assign_text(&launcher_home, {library_path, length});
    is_native_invocation = 1;
    os_name = "Windows";
}

void reset_jlp_for_native_invocation() {
    if (!is_native_invocation) {
        return;
    }
    release_entries(processedArg, &processedArgCount);
    rhs_count = 0;
    lhs_count = 0;
}

void release_jlp_for_native_invocation() {
    if (!is_native_invocation) {
        return;
    }
    reset_jlp_for_native_invocation();
    shared_disk_queries::forget();
    release_entries(newPathList, &newPathListCount);
    release_kept_blocks();
    restore_entries(allow_vm_properties_array, allow_vm_properties_loaded);
    restore_entries(ignore_properties_array, ignore_properties_loaded);
    JLI_ResetArgProcessing();
}

void set_jlp_end_listener(void (*listener)(const char *message, int status)) {
    end_listener = listener;
}
