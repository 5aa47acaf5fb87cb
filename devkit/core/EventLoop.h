#pragma once

/// Runs the UI thread's event loop until nothing is queued in it. What keeps queueing work for itself is left after a
/// while, so that the host stays responsive.
void RunUntilIdle();

/// Runs the event loop for so long, or until the application is asked to quit.
void RunFor(int milliseconds);
