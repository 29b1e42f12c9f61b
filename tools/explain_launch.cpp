// explain_launch: what would the launcher do? Goes through the launcher's own stages up to the
// start, looks at what lies around them, and says what came of it. Starts nothing, writes to no
// file.

#include "core/jlp_vars.h"
#include "tools/configuration_review.h"
#include "tools/installation.h"
#include "tools/launch.h"
#include "tools/launch_review.h"
#include "tools/report.h"
#include "tools/request.h"

namespace {

request asked;

int explain() {
    if (launcher_home != nullptr) {
        review_configuration(launcher_home);
    }
    if (asked.library == nullptr) {
        review_installation();
    }
    review_launch();
    write_report(asked);
    return the_launch.goes_through ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    asked = read_request(argc, argv);
    keep_variables();
    if (asked.library == nullptr) {
        find_installation(asked);
    }
    if (!the_installation.is_home_missing) {
        run_stages(asked, explain);
    }
    return explain();
}
