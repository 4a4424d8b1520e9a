# The commands of this project; each one installs and builds what it needs and what has changed.

.DEFAULT_GOAL := help
.PHONY: help packages all-packages python-packages tool python install release run test checks untested corpus docs bench tidy fuzz hostile package format clean

# Done, all, and the seconds since the start.
export NINJA_STATUS = [%f of %t, %es] 

help: ## Say what there is
	@grep -E '^[a-z]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/:.*## /\t/' | expand -t 12

packages:
	@scripts/install_packages.sh packages.txt

all-packages:
	@scripts/install_packages.sh packages.txt packages_python.txt packages_checks.txt

python-packages: packages
	@scripts/install_packages.sh packages_python.txt

# A build tree is configured once, which leaves the files below; ninja itself sees to the rest. The
# release tree begins with the tool alone. What needs the tests or the benchmarks configures the same
# tree for them, too, and nothing is compiled twice.
build/release/build.ninja: | packages
	@cmake --preset release -D CNDFRMT_BUILD_TESTS=OFF -D CNDFRMT_BUILD_BENCHMARKS=OFF

build/release/tests/CTestTestfile.cmake: | all-packages
	@cmake --preset release

build/%/build.ninja: | all-packages
	@cmake --preset $*

tool: packages build/release/build.ninja
	@cmake --build --preset release --target cndfrmt

python: python-packages build/release/build.ninja ## Build the Python module, and say how to import it
	@cmake build/release -D CNDFRMT_BUILD_PYTHON=ON >build/python.log || (cat build/python.log; exit 1)
	@cmake --build --preset release --target cndfrmt_python_package
	@echo "PYTHONPATH=$(CURDIR)/build/release/lib/python3/dist-packages /usr/bin/python3 -c 'import conditional_formatters'"

PREFIX ?= /usr/local
install: packages build/release/build.ninja ## Build and install the tool and the libraries: make install PREFIX=DIRECTORY
	@cmake --build --preset release --target cndfrmt_installed
	@cmake --install build/release --prefix "$(PREFIX)" >build/install.log || (cat build/install.log; exit 1)
	@echo "CMake finds the libraries by -DCMAKE_PREFIX_PATH=$(abspath $(PREFIX)), pkg-config by" \
	  "PKG_CONFIG_PATH=$$(dirname $$(find "$(abspath $(PREFIX))" -name ConditionalFormatters.pc -print -quit))"

release: all-packages build/release/tests/CTestTestfile.cmake
	@cmake --build --preset release

run: tool ## Resolve the demonstration workbook, and write its page to build/demo.html
	@build/release/bin/cndfrmt resolve examples/demo.xlsx --now 2026-11-21T12:00:00
	@build/release/bin/cndfrmt render examples/demo.xlsx --now 2026-11-21T12:00:00 -o build/demo.html

checks: all-packages
	@scripts/check_layers.sh
	@scripts/check_rooms.sh
	@scripts/check_comments.sh
	@scripts/check_format.sh

test: checks release build/asan/build.ninja build/tsan/build.ninja ## Run every check and test
	@ctest --preset release
	@cmake --build --preset asan && ctest --preset asan
	@cmake --build --preset tsan && ctest --preset tsan

untested: build/asan/build.ninja ## Compile what no test runs: each public header by itself, and the benchmarks
	@cmake build/asan -D CNDFRMT_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build --preset asan --target all_verify_interface_header_sets cndfrmt_bench

corpus: tool ## Compare verdicts on real workbooks with those of other programs
	@tests/corpus/check_corpus.sh build/release/bin/cndfrmt tests/workbooks

docs: all-packages build/release/tests/CTestTestfile.cmake ## Write build/docs/html, the list of functions and the diagrams
	@scripts/install_packages.sh packages_docs.txt
	@cmake --build --preset release --target write_function_docs
	@build/release/bin/write_function_docs >docs/functions.md
	@for diagram in docs/concepts/*.dot; do dot -Tsvg $$diagram -o $${diagram%.dot}.svg; done
	@scripts/make_docs.sh build/docs

format: all-packages ## Lay out the sources
	@scripts/check_format.sh --fix

bench: all-packages ## Measure, and write the tables of docs/performance.md
	@cmake --preset release -D CNDFRMT_BUILD_BENCHMARKS=ON
	@cmake --build --preset release --target cndfrmt_bench
	@build/release/bin/cndfrmt_bench --benchmark_min_time=0.05 --benchmark_repetitions=12 \
	  --benchmark_enable_random_interleaving=true \
	  --benchmark_out=build/bench.json --benchmark_out_format=json
	@scripts/report_benchmarks.py build/bench.json docs/performance.md
	@scripts/install_packages.sh packages_bench.txt
	@cmake --build --preset release --target cndfrmt
	@benchmarks/compare_render.py build/release/bin/cndfrmt 1 1000

tidy: all-packages build/tidy/build.ninja ## Run clang-tidy over the sources
	@scripts/check_tidy.sh


fuzz: SECONDS = 60
fuzz: all-packages build/fuzz/build.ninja build/fuzz-quick/build.ninja ## Look for inputs that break something: make fuzz SECONDS=60 TARGET=formula_text
	@cmake --build --preset fuzz-quick
	@cmake --build --preset fuzz
	@scripts/run_fuzzers.sh $(SECONDS) $(TARGET)

hostile: tool ## Run the tool over hostile files
	@tests/hostile/check_hostile.py build/release/bin/cndfrmt

# The packages of one commit have the same bytes, whenever they are made.
package: export SOURCE_DATE_EPOCH ?= $(shell git log -1 --format=%ct)
package: ## Make Debian packages in build/package/packages, and try them
	@scripts/install_packages.sh packages.txt packages_python.txt packages_package.txt
	@cmake --preset package
	@cmake --build --preset package --target package
	@packaging/check_packages.sh build/package .

clean: ## Remove what was built
	@rm -rf build
