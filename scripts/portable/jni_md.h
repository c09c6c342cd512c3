#pragma once

// The types of a Java virtual machine for Windows. The machine's own headers have those of its
// system.
#define JNIEXPORT __declspec(dllexport)
#define JNIIMPORT __declspec(dllimport)
#define JNICALL __stdcall

typedef int jint;
typedef long long jlong;
typedef signed char jbyte;
