package quorvel;

import java.io.File;
import java.net.URL;
import java.net.URLClassLoader;
import java.util.Arrays;

/** Runs the guest's main class with the guest's options. */
public class Container {
    public static void main(String[] args) throws Exception {
        String classPath = "";
        int i = 0;
        for (; args[i].startsWith("-"); i++) {
            if (args[i].equals("-cp")) {
                classPath = args[++i];
            } else if (args[i].startsWith("-D")) {
                String[] property = args[i].substring(2).split("=", 2);
                System.setProperty(property[0], property[1]);
            }
        }
        System.out.println("container runs " + args[i]);
        File folder = new File(classPath.substring(0, classPath.length() - 1));
        URL[] urls = {folder.listFiles()[0].toURI().toURL()};
        Class<?> guest = new URLClassLoader(urls).loadClass(args[i]);
        String[] guestArgs = Arrays.copyOfRange(args, i + 1, args.length);
        guest.getMethod("main", String[].class).invoke(null, (Object) guestArgs);
    }
}
