#ifndef CORE_JLP_UTILS_H
#define CORE_JLP_UTILS_H

/* The launcher core for hosts, tools and tests: every header with its named functions. Inside the
 * product a file includes the small headers that it needs. */

#include "core/banner.h"
#include "core/child_process.h"
#include "core/config_text.h"
#include "core/configuration.h"
#include "core/home_directories.h"
#include "core/java_versions.h"
#include "core/jlp_vars.h"
#include "core/native_invocation.h"
#include "core/processed_args.h"
#include "core/rewriting/advanced_mode.h"
#include "core/rewriting/agent_args.h"
#include "core/rewriting/arg_files.h"
#include "core/rewriting/jvm_env_vars.h"
#include "core/rewriting/legacy_mode.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "core/rewriting/parse_arguments.h"
#include "core/rewriting/path_rewriting.h"
#include "core/rewriting/ri_mode.h"
#include "core/rewriting/single_arg.h"
#include "core/start_up.h"
#include "jli/args.h"

#endif
