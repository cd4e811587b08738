# Wrappers around CMake. `make run` and `make test` do the whole set-up on a fresh machine.
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
LAUNCHER := $(shell command -v ccache >/dev/null 2>&1 && echo -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

SANITIZE_BUILD ?= build-sanitizers

.PHONY: all deps configure build test test-sanitizers run bench bench-todos screens package format clean

all: build

deps:
	@bash scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTOLVANE_WERROR=ON $(LAUNCHER) >/dev/null

build: configure
	cmake --build $(BUILD) -j$(JOBS)

# Everything, then every test (format check included).
test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j$(JOBS)

# The whole suite again, built with AddressSanitizer and UndefinedBehaviorSanitizer in a folder of
# its own (so the ordinary build is untouched). Leaks are not reported: Qt's plugins keep theirs.
test-sanitizers: deps
	@cmake -S . -B $(SANITIZE_BUILD) -DCMAKE_BUILD_TYPE=Debug -DTOLVANE_WERROR=ON \
		-DTOLVANE_SANITIZE=ON $(LAUNCHER) >/dev/null
	cmake --build $(SANITIZE_BUILD) -j$(JOBS)
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen \
		ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 \
		UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
		ctest --output-on-failure -j$(JOBS)

# Only the program: tests and benchmarks are not built for a run.
run: configure
	cmake --build $(BUILD) -j$(JOBS) --target tolvane
	@[ -f demo/caixa.db ] && [ -f demo/guias-de-exemplo.pdf ] || \
		$(BUILD)/tolvane --pasta demo iniciar --demo
	@echo "Guias de exemplo para ler no caixa: demo/guias-de-exemplo.pdf (e demo/guias-de-exemplo.txt)"
	@$(BUILD)/tolvane --pasta demo

# The table of the speed targets (bench/bench_metas); fails when one is missed.
bench: build
	$(BUILD)/bench/bench_metas

# Every benchmark program; the first that fails stops the run and fails it.
bench-todos: build
	@set -e; for b in $(BUILD)/bench/bench_*; do \
	  if [ -f "$$b" ] && [ -x "$$b" ]; then echo "== $$b"; "$$b"; fi; done

screens: configure
	cmake --build $(BUILD) -j$(JOBS) --target tolvane
	@rm -rf $(BUILD)/screens && mkdir -p $(BUILD)/screens
	QT_QPA_PLATFORM=offscreen $(BUILD)/tolvane telas $(BUILD)/screens

# The Debian package tolvane_<version>_<arch>.deb in the current folder: only the program is
# built (the tests are not), and CPack installs the program and its data, nothing else.
package: configure
	cmake --build $(BUILD) -j$(JOBS) --target tolvane package_files
	cd $(BUILD) && rm -f tolvane_*.deb && cpack -G DEB
	cp $(BUILD)/tolvane_*.deb .

format:
	git ls-files -co --exclude-standard -- '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD)
