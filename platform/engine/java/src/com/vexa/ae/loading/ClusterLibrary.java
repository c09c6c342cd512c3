package com.vexa.ae.loading;

import java.io.IOException;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.file.DirectoryStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/**
 * The client of a cluster, in a class loader of its own. Its libraries do not see those of the host,
 * nor the host's see them, and nothing of it is loaded before open is called.
 */
public final class ClusterLibrary
{
    private static final String SESSION = "com.vexa.ae.cluster.ClusterSession";

    private ClusterLibrary() {}

    /** Returns the class of the sessions. Call it once: each call loads all classes again. Throws
     * NoSuchFileException if there is no such folder. */
    public static Class<?> open(String folder) throws IOException, ClassNotFoundException
    {
        List<URL> jars = new ArrayList<>();
        try (DirectoryStream<Path> found = Files.newDirectoryStream(Path.of(folder), "*.jar")) {
            for (Path jar : found) {
                jars.add(jar.toUri().toURL());
            }
        }
        @SuppressWarnings("resource") // the classes are used until the process ends
        URLClassLoader loader = new URLClassLoader(
            "cluster", jars.toArray(new URL[0]), ClassLoader.getPlatformClassLoader());
        return Class.forName(SESSION, true, loader);
    }
}
