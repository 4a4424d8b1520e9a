# The commands of this project; each one installs and builds what it needs and what has changed.

.DEFAULT_GOAL := help
.PHONY: help packages release run test checks corpus bench tidy format clean

help: ## Say what there is
	@grep -E '^[a-z]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/:.*## /\t/' | expand -t 12

packages:
	@scripts/install_packages.sh

# build/NAME/build.ninja is the mark of a configured build tree; ninja itself sees to the rest.
build/%/build.ninja: | packages
	@cmake --preset $*

release: packages build/release/build.ninja
	@cmake --build --preset release

run: release ## Resolve the demonstration workbook
	@build/release/bin/cndfrmt resolve examples/demo.xlsx --now 2026-11-21T12:00:00

checks: packages
	@scripts/check_layers.sh
	@scripts/check_format.sh

test: checks release build/asan/build.ninja build/tsan/build.ninja ## Run every check and test
	@cmake --build --preset release --target all_verify_interface_header_sets
	@ctest --preset release
	@cmake --build --preset asan && ctest --preset asan
	@cmake --build --preset tsan && ctest --preset tsan

corpus: release ## Compare verdicts on real workbooks with those of other programs
	@tests/corpus/check_corpus.sh build/release/bin/cndfrmt tests/workbooks

format: packages ## Lay out the sources
	@scripts/check_format.sh --fix

bench: release ## Measure, and write the tables of docs/performance.md
	@build/release/bin/cndfrmt_bench --benchmark_min_time=0.05 --benchmark_repetitions=12 \
	  --benchmark_enable_random_interleaving=true \
	  --benchmark_out=build/bench.json --benchmark_out_format=json
	@scripts/report_benchmarks.py build/bench.json docs/performance.md

tidy: packages build/tidy/build.ninja ## Run clang-tidy over the sources
	@scripts/check_tidy.sh

clean: ## Remove what was built
	@rm -rf build
