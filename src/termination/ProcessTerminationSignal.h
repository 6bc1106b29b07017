#pragma once

// graceful is signal 15, forced signal 9.
enum class ProcessTerminationSignal { graceful, forced };
