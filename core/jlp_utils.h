#ifndef CORE_JLP_UTILS_H
#define CORE_JLP_UTILS_H

/* The launcher core for hosts, tools and tests: every header with its named functions. Inside the
 * product a file includes the small headers that it needs. */

#include "core/banner.h"
#include "core/child_process.h"
#include "core/config_text.h"
#include "core/configuration.h"
#include "core/home_directories.h"
#include "core/jlp_vars.h"
#include "core/processed_args.h"
#include "core/start_up.h"

#endif
