/** Says how it was started and ends with the exit code that its first argument names. */
public class Hello {
    public static void main(String[] arguments) {
        System.out.println("Hello from Java " + System.getProperty("java.version"));
        System.out.println("folder:    " + System.getProperty("user.dir"));
        System.out.println("arguments: " + String.join(", ", arguments));
        System.out.println("greeting:  " + System.getenv("GREETING"));
        System.exit(Integer.parseInt(arguments[0]));
    }
}
