#!/usr/bin/env bash
# Plants the faults of tests/mutants.tsv one at a time and says which of them no test notices (docs/testing.md).
# tests/run_mutants.sh [NUMBER…] tries only those; --help lists the options.
exec python3 "$(dirname "${BASH_SOURCE[0]}")/run_mutants.py" "$@"
