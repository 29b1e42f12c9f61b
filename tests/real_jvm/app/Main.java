package app;

import java.util.stream.Collectors;
import java.util.stream.Stream;

/** Shows what of its command line arrives, and ends with 7. */
public class Main {
    public static void main(String[] args) {
        System.out.println(String.join(", ", args));
        System.out.println(Stream.of("my.dir", "from.file", "from.variable", "configured",
                "com.quorvel.LauncherPackPath", "com.quorvel.ContainerHome",
                "com.quorvel.AgentEnvironment").map(System::getProperty)
                .collect(Collectors.joining(", ")));
        Module base = Object.class.getModule();
        boolean isOpen = base.isOpen("jdk.internal.misc", Main.class.getModule());
        boolean isPatched = base.getPackages().contains("java.quorvel");
        System.out.println((isOpen ? "open" : "closed") + (isPatched ? ", patched" : ""));
        System.exit(7);
    }
}
