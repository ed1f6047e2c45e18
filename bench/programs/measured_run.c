// Runs a program with its standard output thrown away and prints what that cost: microseconds by the wall
// clock, microseconds of processor outside the kernel and in it, page faults without a disk, KiB resident at
// the most. It is small itself: a process's peak counts from before it became another program.
//
// usage: bench-measured-run PROGRAM ARGUMENTS...; exit status that of the program, 125 where it was ended by
// a signal

#define _GNU_SOURCE
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdio.h>
#include <time.h>

static long microseconds(struct timeval time) { return time.tv_sec * 1000000L + time.tv_usec; }

int main(int argc, char** argv) {
  if (argc < 2) {
    return 125;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  struct timespec start;
  struct timespec end;
  clock_gettime(CLOCK_MONOTONIC, &start);
  pid_t child = -1;
  if (posix_spawnp(&child, argv[1], &actions, NULL, argv + 1, environ) != 0) {
    return 125;
  }
  int status = 0;
  struct rusage used;
  if (wait4(child, &status, 0, &used) != child) {
    return 125;
  }
  clock_gettime(CLOCK_MONOTONIC, &end);
  printf("%ld %ld %ld %ld %ld\n",
         (end.tv_sec - start.tv_sec) * 1000000L + (end.tv_nsec - start.tv_nsec) / 1000,
         microseconds(used.ru_utime), microseconds(used.ru_stime), used.ru_minflt, used.ru_maxrss);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 125;
}
