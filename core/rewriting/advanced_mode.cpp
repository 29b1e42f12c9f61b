#include "core/rewriting/advanced_mode.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/jvm_env_vars.h"
#include "core/rewriting/option_filters.h"
#include "jli/packed_texts.h"
#include "jli/text.h"

namespace {

// Properties of both sides.
constexpr auto NETWORK_AND_ENCODING = packed(
    "-Djava.net.preferIPv", "-Dsun.net.inetaddr.ttl=", "-Dnetworkaddress.cache.ttl=",
    "-Dsun.net.inetaddr.negative.ttl=", "-Dnetworkaddress.cache.negative.ttl=", "-Dfile.encoding");

// Properties of the host.
constexpr auto QUORVEL_PROPERTIES = packed("-Dquorvel:", "-Dcom.quorvel.");

// Every other property, and what the guest's user asks its JVM for.
constexpr auto GUEST_OPTIONS = packed("-D", "-help", "-?", "-javaagent", "-manpage", "-version");

// To the guest, and to the host as well where it is allowed to have them.
void place_guest_option(const argument_list &host, const argument_list &guest, const char *arg) {
    if (is_xbootclasspath_arg(arg)) {
        place(guest, moved_boot_class_path(arg, container_home));
        return;
    }
    if (is_possible_path_arg(arg)) {
        arg = moved_property(arg, container_home);
    }
    if (is_arg_allowed_vm_property(arg)) {
        place(host, arg);
    }
    place(guest, arg);
}

} // namespace

void process_single_arg_for_advanced(const char *arg, char **host, int *host_count, char **guest,
                                     int *guest_count, int *main_class_found,
                                     int *expect_classpath_value, int *expect_module_value,
                                     int *rule_file_arg_added) {
    const argument_list to_host = {host, host_count};
    const argument_list to_guest = {guest, guest_count};
    // The first that holds decides. So what is dropped never counts as a value, a class path option
    // is none either, a value is one whatever it reads like, and the properties of both sides and
    // of the host come before "-D", which begins them all.
    if (*main_class_found) {
        place(to_guest, arg);
    } else if (is_ignore_property(arg, is_host_java_9_plus)) {
        return;
    } else if (begins_with(arg, "-Xrun")) {
        place_agent_library(to_host, arg);
    } else if (is_class_path_option(arg)) {
        place(to_guest, strcmp(arg, "--class-path") == 0 && !is_guest_java_9_plus ? "-cp" : arg);
        *expect_classpath_value = 1;
    } else if (is_class_path_assignment(arg)) {
        place_class_path_assignment(to_guest, arg, container_home, !is_guest_java_9_plus);
    } else if (*expect_classpath_value) {
        place(to_guest, moved_value(arg, container_home));
        *expect_classpath_value = 0;
    } else if (*expect_module_value) {
        place(to_host, arg);
        *expect_module_value = 0;
    } else if (is_native_invocation && *arg != '-') {
        place(to_host, arg);
    } else if (ends_options(arg)) {
        apply_configured_container_options(guest, guest_count, host, host_count);
        place(to_guest, arg);
        *main_class_found = 1;
    } else if (begins_with_one_of(arg, NETWORK_AND_ENCODING.data())) {
        place(to_host, arg);
        place(to_guest, arg);
    } else if (begins_with(arg, "-fullversion")) {
        place_constant(to_host, "-Dcom.quorvel.ShowJavaVersion=fullversion");
        place_constant(to_guest, "-version");
    } else if (is_heap_size_in_megabytes(arg)) {
        place_heap_size(to_host, arg);
    } else if (begins_with_one_of(arg, QUORVEL_PROPERTIES.data())) {
        if (begins_with(arg, "-Dcom.quorvel.rules.local")) {
            place_rules_property(to_host, arg, rule_file_arg_added);
        } else {
            place(to_host, arg);
        }
    } else if (begins_with_one_of(arg, GUEST_OPTIONS.data()) || is_xbootclasspath_arg(arg)) {
        place_guest_option(to_host, to_guest, arg);
    } else {
        place(to_host, arg);
        if (is_module_value_option(arg)) {
            *expect_module_value = 1;
        }
    }
}

void apply_configured_container_options(char ** /*guest*/, int * /*guest_count*/, char **host,
                                        int *host_count) {
    if (is_taking_container_options) {
        return;
    }
    is_taking_container_options = 1;
    for (int i = 0; i < container_options_count; i++) {
        place({host, host_count}, container_options_array[i]);
    }
    process_jvm_env_var("_JAVA_OPTIONS");
    is_taking_container_options = 0;
}
