#include <gtest/gtest.h>

#include "core/home_faults.h"
#include "core/jlp_utils.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

namespace {

// One argument after the other, without what parse_arguments adds.
void place_each(const std::string &args) {
    int main_class_found = 0;
    int expect_classpath_value = 0;
    int expect_module_value = 0;
    int rule_file_arg_added = 0;
    for (const std::string &arg : entries_of(here(args))) {
        process_single_arg(arg.c_str(), lhs, &lhs_count, rhs, &rhs_count, &main_class_found, &expect_classpath_value,
                           &expect_module_value, &rule_file_arg_added);
    }
}

// Launch mode and Java versions -> arguments -> host or leading list -> guest or trailing list
constexpr char PLACES[] = R"(
// Nothing is looked at after the main class
advanced 9 9 -> Main|-Xmx1m|-Xshare:on|@x|-cp|C:\L|a b -> -Xc|"-Dc=C:\L d" -> Main|-Xmx1m|-Xshare:on|@x|-cp|C:\L|"a b"
legacy 8 8   -> -javaagent:a.jar|Main|-javaagent:b|@x|a b -> -> -javaagent:a.jar|Main|-javaagent:b|@x|"a b"
ri 8 8       -> -javaagent:a.jar|Main|-cp|C:\L|@x -> -javaagent:a.jar -> Main|-cp|C:\L|@x
// Dropped and converted options
advanced 8 9 -> -Xshare:on|-Xno:a|-Xrunno:a|-XX:+UseParNewGC|-Xruna:b:1|-Xrun|-Xrun: -> -XX:+UseParNewGC|-agentlib:a=b:1|-agentlib:|-agentlib:= ->
advanced 9 8 -> -Xshare:auto|-Xshare:off|-XX:+UseParNewGC|-d64|-Xruna b -> -Xshare:off|"-agentlib:a b" ->
secure 8 8   -> -Xshare:auto|-Xno|-XX:+UseParNewGC|-Xruna:b|-Xshare:off -> -XX:+UseParNewGC|-agentlib:a=b|-Xshare:off ->
patch 9 8    -> -Xshare:on|-XX:+UseParNewGC|-server|-Xruna -> -agentlib:a ->
ri 9 8       -> -Xrunjdwp:a|-Xshare:on|-Xmx100m|-XX:+UseParNewGC|-Xno|-server -> -Xrunjdwp:a|-Xshare:on|-Xmx100m|-XX:+UseParNewGC|-Xno|-server ->
// Class paths
advanced 8 9 -> -cp|C:\L\a b.jar;x|-classpathx|C:\Lx|-cpy|C:\L/y -> -> -cp|"C:\C\a b.jar;x"|-classpathx|C:\Lx|-cpy|C:\C\y
advanced 8 9 -> --class-path=C:\L|--class-path|C:\L -> --class-path=C:\L|--class-path|-Xc|"-Dc=C:\L d" -> C:\L
advanced 9 8 -> --class-path|C:\L|--class-path=C:\L\a|--class-pathx -> --class-pathx -> -cp|C:\C|-cp|C:\C\a
advanced 9 9 -> --class-path|C:\L|--class-path=C:\L\a -> -> --class-path|C:\C|--class-path=C:\C\a
advanced 9 9 -> -cp|-Xshare:on|-Xruna|-jar|-Dx -> -agentlib:a -> -cp|-jar|-Dx
legacy 9 8   -> --class-path|C:\L\a|--class-path=C:\L|-cpx|C:\L -> -cp|C:\C\a|-cp|C:\C|-cpx|C:\C ->
legacy 9 9   -> --class-path|C:\L\a|--class-path=C:\L -> --class-path|C:\C\a|--class-path=C:\C ->
patch 9 8    -> --class-path|C:\L\a|--class-path=C:\L|-classpath|C:\L -> --class-path|C:\J\a|--class-path=C:\J|-classpath|C:\J ->
secure 9 8   -> -cp|-Xshare:on|C:\L|-Xbootclasspath/a:C:\L|-Dx=C:\L -> -cp|C:\J|-Xbootclasspath/a:C:\J|-Dx=C:\J ->
ri 9 8       -> --class-path|-Dx=1;C:\L|--class-path=C:\L|-classpath|C:\L -> --class-path|-Dx=1;C:\J|--class-path=C:\J|-classpath|C:\J ->
// The value of a module option stands next to it
advanced 9 8 -> -p|-cp|C:\L|C:\L\m|-Dx -> -p|C:\L\m -> -cp|C:\C|-Dx
advanced 8 9 -> -p|m -> -p|-Xc|"-Dc=C:\L d" -> m
legacy 9 9   -> -p|-cp|C:\L|-javaagent:m|-javaagent:a -> -p|-cp|C:\C|-javaagent:m -> -javaagent:a
ri 9 8       -> -p|m|m|-p -> -p|m -> m|-p
ri 9 8       -> -cp|--add-modules|m1|m2 -> -cp|--add-modules -> m1|m2
ri 9 8       -> -cp|-p|--add-modules|-d|m1 -> -cp|-p|--add-modules|-d -> m1
ri 9 8       -> -cp y|--class-path=a b|-p|-p|m1|m2 -> "-cp y"|"--class-path=a b"|-p|-p|m1 -> m2
// The end of the options
native 8 8   -> C:\L\x|a b||-jar|C:\L\x -> C:\L\x|a b||-Xc|-Dc=C:\L d -> -jar|C:\L\x
advanced 9 8 -> -jarx|C:\L -> -Xc|"-Dc=C:\L d" -> -jarx|C:\L
advanced 9 8 -> --modulex|--module|m|-Dx -> --modulex|-Xc|"-Dc=C:\L d" -> --module|m|-Dx
advanced 9 8 -> -m|m|-Dx -> -m|-Xc|"-Dc=C:\L d" -> m|-Dx
advanced 9 8 -> --module=m|-Dx -> -Xc|"-Dc=C:\L d" -> --module=m|-Dx
advanced 8 8 -> --module=m|--module| -> --module=m|--module|-Xc|"-Dc=C:\L d" ->
patch 9 8    -> --module|m|-Dx -> -> --module|m|-Dx
ri 9 8       -> --module=m|-Dx=C:\L -> -> --module=m|-Dx=C:\L
// Options of both sides, of the host and of the guest
advanced 8 8 -> -Djava.net.preferIPv4Stack=true|-Dsun.net.inetaddr.ttl=1 -> -Djava.net.preferIPv4Stack=true|-Dsun.net.inetaddr.ttl=1 -> -Djava.net.preferIPv4Stack=true|-Dsun.net.inetaddr.ttl=1
advanced 8 8 -> -Dnetworkaddress.cache.ttl=1|-Dfile.encoding=C:\L -> -Dnetworkaddress.cache.ttl=1|-Dfile.encoding=C:\L -> -Dnetworkaddress.cache.ttl=1|-Dfile.encoding=C:\L
advanced 8 8 -> -Dsun.net.inetaddr.negative.ttl=1|-Dnetworkaddress.cache.negative.ttl=C:\L -> -Dsun.net.inetaddr.negative.ttl=1|-Dnetworkaddress.cache.negative.ttl=C:\L -> -Dsun.net.inetaddr.negative.ttl=1|-Dnetworkaddress.cache.negative.ttl=C:\L
advanced 8 8 -> -fullversion|-fullversionx|-Dx -> -Dcom.quorvel.ShowJavaVersion=fullversion|-Dcom.quorvel.ShowJavaVersion=fullversion -> -version|-version|-Dx
advanced 8 8 -> -Dquorvel:y=C:\L|-Dcom.quorvel.rules.local=C:\L|-Dcom.quorvel -> -Dquorvel:y=C:\L|-Dcom.quorvel.rules.local=C:\L -> -Dcom.quorvel
advanced 8 8 -> -Dmy.dir=C:\L\d|-Dmy=C:\L|-Dplain=C:\L|-D|-DC:\L -> -Dmy.dir=C:\C\d -> -Dmy.dir=C:\C\d|-Dmy=C:\C|-Dplain=C:\L|-D|-DC:\L
advanced 8 8 -> -help|-?|-?x|-javaagent:C:\L|-manpage|-version|-versionx -> -help -> -help|-?|-?x|-javaagent:C:\L|-manpage|-version|-versionx
advanced 8 8 -> -Xbootclasspath:C:\L|-Xbootclasspath/p:C:\L|-Xbootclasspath/a:C:\L|-Xbootclasspath -> -Xbootclasspath -> -Xbootclasspath:C:\C|-Xbootclasspath/p:C:\C|-Xbootclasspath/a:C:\C
advanced 9 8 -> -X|-ea|-agentlib:a|-a b -> -X|-ea|-agentlib:a|"-a b" ->
legacy 8 8   -> -Xbootclasspath:C:\L|-Dcom.quorvel.rules.local=C:\L|-Dplain=C:\L|-Dcom.quorvel.x=C:\L -> -Xbootclasspath:C:\C|-Dcom.quorvel.rules.local=C:\L|-Dplain=C:\L|-Dcom.quorvel.x=C:\C ->
legacy 9 9   -> -fullversion|-version|-help|-?|-Dfile.encoding=x|-a b -> -fullversion|-version|-help|-?|-Dfile.encoding=x|"-a b" ->
ri 9 8       -> -Xbootclasspath/a:C:\L|-Dapp.dir=C:\L\d|-Dplain.dir=C:\L|-DC:\L -> -Xbootclasspath/a:C:\J|-Dapp.dir=C:\J\d|-Dplain.dir=C:\L|-DC:\L ->
)";

// Argument -> what the modes with agents make of it
constexpr char HEAPS[] = R"(
-Xmx128m -> -Xmx256m
-Xmx1g -> -Xmx1g
-Xmxm -> -Xmx256m
-Xmx-1m -> -Xmx256m
-Xmx1x999m -> -Xmx256m
-Xmx4294967297m -> -Xmx4294967297m
-Xmx000000000000000000000000000000000000000000000000000128m -> -Xmx256m
)";

} // namespace

TEST(launch_modes, place_each_argument) {
    make_disk();
    std::vector<texts> rows = rows_of(PLACES);
    const std::string module_options =
        "-p|-Dx=C:\\L|--module-path|-p|--upgrade-module-path|-Xmx1m|-d|-jar|--describe-module|m|--add-modules|m|"
        "--limit-modules|m|--add-exports|m|--add-opens|m|--add-reads|m|--patch-module|m";
    for (const char *how : {"advanced 9 8", "legacy 9 9", "secure 9 8", "ri 9 8"}) {
        rows.push_back({how, module_options, module_options, ""});
    }
    for (const texts &heap : rows_of(HEAPS)) {
        rows.push_back({"advanced 9 9", heap[0], heap[1], ""});
        rows.push_back({"legacy 8 8", heap[0], heap[1], ""});
    }
    for (const texts &row : rows) {
        start(row[0], "NON_PATH_OPTIONS=plain\nALLOW_VM_OPTIONS=my.dir=elp\nIGNORE_OPTIONS=-Xno=-Xrunno\n"
                      "CONTAINER_OPTIONS=\"-Xc\" \"-Dc=C:\\L d\"");
        place_each(row[1]);
        EXPECT_EQ(host_list(), row[2]) << row[0] << ' ' << row[1];
        EXPECT_EQ(guest_list(), row[3]) << row[0] << ' ' << row[1];
    }
}

TEST(launch_modes, do_without_a_mode) {
    make_disk();
    start("legacy 8 8");
    use_advanced_launch_mode = 1;
    place_each("-cp");
    EXPECT_EQ(guest_list(), "-cp");
    release_text(&launch_mode);
    use_advanced_launch_mode = 0;
    assign_text(&bin_dir, bin);
    EXPECT_EQ(target_path("x").get(), here("C:\\J\\bin\\x"));
    rewrite("-cp|C:\\L|Main");
    EXPECT_TRUE(host_list().ends_with("-Dcom.quorvel.LauncherPackPath=C:\\L|-javaagent:\"C:\\Q\\quorvel.jar\""));
}
