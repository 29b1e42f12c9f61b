package quorvel;

import java.io.File;
import java.net.URL;
import java.net.URLClassLoader;
import java.util.Arrays;

/** The agent; and the container, which runs the guest's main class with the guest's options. */
public class Container {
    public static void premain(String options) {
        System.out.println("java agent ran");
    }

    public static void main(String[] args) throws Exception {
        int i = 0;
        for (; args[i].startsWith("-D"); i++) {
            String[] property = args[i].substring(2).split("=", 2);
            System.setProperty(property[0], property[1]);
        }
        System.out.println("container runs " + args[i] + " " + args[i + 2]);
        URL[] urls = {new File(args[i + 1].replace("*", "app.jar")).toURI().toURL()};
        Class<?> guest = new URLClassLoader(urls).loadClass(args[i + 2]);
        String[] guestArgs = Arrays.copyOfRange(args, i + 3, args.length);
        guest.getMethod("main", String[].class).invoke(null, (Object) guestArgs);
    }
}
