#pragma once

/// The main function of all test processes. It fixes the environment that results depend on, and at the end it checks
/// that nothing of ours is left behind. A warning of the toolkit that begins with "QObject" fails the case that runs,
/// or the run. With ZR_ROUNDS in the environment many rounds are run.
namespace test_process {

/// Runs the tests in virtual time, on the offscreen platform. Widgets that are left fail the run.
int RunInVirtualTime(int argc, char** argv);

/// Runs the tests with an ordinary event loop and without windows.
int RunInRealTime(int argc, char** argv);

}  // namespace test_process
