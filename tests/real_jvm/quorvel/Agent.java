package quorvel;

import java.lang.instrument.Instrumentation;

public class Agent {
    public static void premain(String options, Instrumentation instrumentation) {
        System.out.println("java agent ran");
    }
}
