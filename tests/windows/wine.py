"""A Windows of the tests' own (Wine, without a display), the programs under test and install files for them."""
import contextlib
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest
import zipfile

HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(os.environ.get('BUILD', HERE.parent.parent / 'build'))
MODULE = BUILD / 'windows/Xcdsfx32.bin'
SETUP = BUILD / 'windows/setup.exe'
PACK = BUILD / 'tests/pack'
PROGRAM = BUILD / 'app/tarvolinex'
PREFERENCES = BUILD / 'app/delivered/General.dat'
SOURCES = HERE.parent.parent / 'windows'
LIST = HERE.parent.parent / 'installed/Setup.lst'
ICON = HERE.parent.parent / 'installed/database/icons/CHART.ICO'
COMPILER = 'x86_64-w64-mingw32-g++'

# Of Wine's own complaints those are shown that tell why a program did not start.
COMPLAINTS = '-all,err+virtual,err+module,err+server,err+process,err+environ'

keeper = contextlib.ExitStack()
root = pathlib.Path(tempfile.mkdtemp(prefix='tarvolinex-wine-'))
environment = dict(
    os.environ, WINEPREFIX=str(root / 'prefix'), HOME=str(root / 'home'), WINEDEBUG=COMPLAINTS, LC_ALL='C.UTF-8',
    WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe=', SEEN=f'Z:{root}/seen'.replace('/', '\\'))
for name in ('DISPLAY', 'WAYLAND_DISPLAY', 'XDG_DESKTOP_DIR'):
    environment.pop(name, None)


def start():
    (root / 'home').mkdir()
    shared = [SOURCES / f'system/{source}.cpp' for source in ('CodePages', 'Failure', 'SmallRuntime', 'Text')]
    compile = [COMPILER, '-std=c++20', '-static', '-s', '-O1', '-I', SOURCES, '-o']
    compilers = [subprocess.Popen([*compile, root / 'helper.exe', HERE / 'helper.cpp', '-municode', *shared]),
                 subprocess.Popen([*compile, root / 'plant.dll', HERE / 'plant.cpp', '-shared'])]
    run('wineboot', '--init')
    run('reg', 'add', 'HKCU\\Software\\Wine\\Drivers', '/v', 'Graphics', '/d', 'null')  # windows that nobody sees
    assert all(compiler.wait() == 0 for compiler in compilers)
    # As long as one program runs, the services need not start anew for each of the others.
    (root / 'kept').touch()
    keeper.enter_context(held(root / 'kept'))


def stop():
    keeper.close()
    subprocess.run(['wineserver', '-k', '-w'], env=environment, check=False)
    shutil.rmtree(root, ignore_errors=True)


def begin(program, *arguments, **variables):
    return subprocess.Popen(['wine', str(program), *arguments], env=dict(environment, **variables), encoding='utf-8',
                            errors='replace', stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def end(process):
    output, errors = process.communicate(timeout=60)
    return subprocess.CompletedProcess(process.args, process.returncode, output, errors)


def run(program, *arguments, **variables):
    return end(begin(program, *arguments, **variables))


def press(button, title):
    """Presses OK (1) or Cancel (2) in the message box of that title and returns its text."""
    result = run(root / 'helper.exe', 'press', str(button), title)
    assert result.returncode == 0, result
    return result.stdout


@contextlib.contextmanager
def held(path=None):
    """Another program keeps the file to itself meanwhile; without one, it installs something."""
    words = ['hold', windows(path)] if path else ['lock']
    with subprocess.Popen(['wine', str(root / 'helper.exe'), *words], env=environment, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
        assert process.stdout.readline().strip() == b'held'
        yield


def windows(path):
    return 'Z:' + str(path).replace('/', '\\')


def user(*below):
    """A path in the user's folder of that Windows."""
    home = next(p for p in (root / 'prefix/drive_c/users').iterdir() if p.name != 'Public')
    return home.joinpath(*below)


def temporary_files():
    """What the programs left in the user's temporary folder."""
    return sorted(p.name for p in user('AppData/Local/Temp').glob('tarvolinex*'))


def wait_until(condition, seconds=15):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError('it did not come to be in time')
        time.sleep(0.05)


def preferences(company):
    """The delivered preferences with the company's name, as the program writes them."""
    path = root / 'General.dat'
    shutil.copy(PREFERENCES, path)
    fields = json.dumps({'OrgCompanyName': company})
    subprocess.run([PROGRAM, 'record', 'write', path], input=fields, encoding='utf-8', check=True)
    return path.read_bytes()


def packed(folder, files, command='%t\\setup.exe', title='Preisbuch'):
    """An install file of (name or ZipInfo, bytes) pairs in the folder, made by the packer of the program."""
    archive, target = folder / 'in.zip', folder / 'CalcInstall.exe'
    with zipfile.ZipFile(archive, 'w', zipfile.ZIP_DEFLATED) as out:
        for name, data in files:
            out.writestr(name, data)
    subprocess.run([PACK, title, command, MODULE, ICON, archive, target], check=True)
    archive.unlink()
    return target


class WindowsTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=root))
        (root / 'seen').unlink(missing_ok=True)

    def tearDown(self):
        self.assertEqual(temporary_files(), [], 'something stayed in the temporary folder')
        shutil.rmtree(self.folder)

    def assert_refused(self, result, *words):
        self.assertEqual(result.returncode, 1, result)
        for word in words:
            self.assertIn(word, result.stderr, result)
