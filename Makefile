# Thin wrappers around CMake. `make run` and `make test` set up a fresh machine first.
BUILD      ?= build
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=

.PHONY: deps build run test sanitize sanitize-data tsan coverage bench format format-check clean

deps:
	@bash scripts/install-deps.sh

build: deps
	@cmake -S . -B $(BUILD) $(CMAKE_ARGS) >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

# The window program when there is a display to show it on, else the headless smoke program.
# The program reads no command line: the demo project and the two particle examples (the LAMMPS
# melt and the XYZ molecules) are put first in the build's recent files, so they open from the
# ribbon's recent list.
run: build
	@recent=$(BUILD)/bin/Orvantis4Recent.txt; \
	for demo in $(CURDIR)/examples/lammps/melt.ovp $(CURDIR)/examples/xyz/molecules.ovp $(CURDIR)/examples/demo.ovp; do \
		if ! grep -qxF "$$demo" "$$recent" 2>/dev/null; then \
			{ echo "$$demo"; cat "$$recent" 2>/dev/null; } | head -n 10 > "$$recent.new" && mv "$$recent.new" "$$recent"; \
		fi; \
	done
	@if [ -x $(BUILD)/bin/orvantis4 ] && [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then \
		$(BUILD)/bin/orvantis4; \
	else \
		$(BUILD)/bin/orvantis4-smoke examples/demo.ovp; \
	fi

test: build format-check
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	@case "$(CMAKE_ARGS)" in *ORV_SANITIZE*) ;; *) $(MAKE) --no-print-directory sanitize-data ;; esac

# The preparation and reader tests again under AddressSanitizer and UBSan, on every test run: they
# index arrays through match tables and file contents, where a slip reads past an array in silence.
sanitize-data: deps
	@cmake -S . -B build-asan $(CMAKE_ARGS) -DORV_SANITIZE=address,undefined -DORV_BUILD_BENCH=OFF >/dev/null
	@cmake --build build-asan -j $(JOBS) --target test_prep test_simdata
	cd build-asan && ctest --output-on-failure -j $(JOBS) -R '^(prep|simdata)[.]'

sanitize:
	$(MAKE) test BUILD=build-asan CMAKE_ARGS="-DORV_SANITIZE=address,undefined -DORV_BUILD_BENCH=OFF"

tsan:
	$(MAKE) test BUILD=build-tsan CMAKE_ARGS="-DORV_SANITIZE=thread -DORV_BUILD_BENCH=OFF"

# Line coverage of every layer by the whole test suite: one summary line per folder under src/.
coverage: deps
	@cmake -S . -B build-cov -DORV_COVERAGE=ON -DORV_BUILD_BENCH=OFF >/dev/null
	@cmake --build build-cov -j $(JOBS)
	@find build-cov -name '*.gcda' -delete
	-cd build-cov && ctest -j $(JOBS) >/dev/null
	@bash scripts/coverage-summary.sh build-cov

bench: build
	@for b in $(BUILD)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done

format:
	@git ls-files '*.cpp' '*.h' | xargs -r clang-format -i

format-check:
	@git ls-files '*.cpp' '*.h' | xargs -r clang-format --dry-run --Werror

clean:
	rm -rf build build-asan build-tsan build-cov
