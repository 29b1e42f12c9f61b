package quorvel;

public class Agent {
    public static void premain(String options) {
        System.out.println("java agent ran");
    }
}
