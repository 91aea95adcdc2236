"""A Windows of the tests' own (Wine, without a display), the programs under test and install files for them."""
import io
import json
import os
import pathlib
import shutil
import struct
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

root = pathlib.Path(tempfile.mkdtemp(prefix='tarvolinex-wine-'))
environment = dict(
    os.environ, WINEPREFIX=str(root / 'prefix'), HOME=str(root / 'home'), WINEDEBUG=COMPLAINTS, LC_ALL='C.UTF-8',
    WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe=', SEEN=f'Z:{root}/seen'.replace('/', '\\'))
for name in ('DISPLAY', 'WAYLAND_DISPLAY', 'XDG_DESKTOP_DIR'):
    environment.pop(name, None)


def start():
    (root / 'home').mkdir()
    shared = [SOURCES / f'system/{source}.cpp' for source in ('CodePages', 'Failure', 'SmallRuntime', 'Text')]
    compilers = [subprocess.Popen([COMPILER, '-std=c++20', '-static', '-s', '-O1', HERE / f'{source}.cpp', '-o', root / target, *more])
                 for source, target, more in (('helper', 'helper.exe', ['-municode', '-I', SOURCES, *shared]),
                                              ('plant', 'plant.dll', ['-shared']))]
    run('wineboot', '--init')
    run('reg', 'add', 'HKCU\\Software\\Wine\\Drivers', '/v', 'Graphics', '/d', 'null')  # windows that nobody sees
    assert all(compiler.wait() == 0 for compiler in compilers)
    global temporary
    told = run('cmd', '/c', 'echo', '%TEMP%').stdout.strip()
    temporary = root / 'prefix/drive_c' / told[3:].replace('\\', '/')
    assert temporary.is_dir(), told
    # As long as one program runs, the services need not start anew for each of the others.
    (root / 'kept').touch()
    global keeper
    keeper = hold('hold', windows(root / 'kept'))


def stop():
    release(keeper)
    subprocess.run(['wineserver', '-k', '-w'], env=environment, check=False)
    shutil.rmtree(root, ignore_errors=True)


def begin(program, *arguments, **variables):
    return subprocess.Popen(['wine', str(program), *arguments], env=dict(environment, **variables), stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, encoding='utf-8', errors='replace')


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


def hold(*words):
    """What the helper's words make it keep stays so until it is released."""
    process = subprocess.Popen(['wine', str(root / 'helper.exe'), *words], env=environment,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    assert process.stdout.readline().strip() == b'held'
    return process


def release(process):
    process.stdin.close()
    process.stdout.close()
    process.wait()


def windows(path):
    return 'Z:' + str(path).replace('/', '\\')


def user(*below):
    """A path in the user's folder of that Windows."""
    home = next(p for p in (root / 'prefix/drive_c/users').iterdir() if p.name != 'Public')
    return home.joinpath(*below)


def temporary_files():
    """What the programs left in the user's temporary folder."""
    return sorted(p.name for p in temporary.glob('tarvolinex*'))


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
    subprocess.run([PROGRAM, 'record', 'write', path], input=json.dumps({'OrgCompanyName': company}).encode(), check=True)
    return path.read_bytes()


def archive(files):
    """A zip of (name or ZipInfo, bytes) pairs."""
    out = io.BytesIO()
    with zipfile.ZipFile(out, 'w', zipfile.ZIP_DEFLATED) as packed:
        for name, data in files:
            packed.writestr(name, data)
    return out.getvalue()


def packed(folder, files, name='CalcInstall.exe', command='%t\\setup.exe', title='Preisbuch'):
    """An install file in the folder, made by the packer of the program, of an archive's bytes or of pairs."""
    (folder / 'in.zip').write_bytes(files if isinstance(files, bytes) else archive(files))
    target = folder / name
    subprocess.run([PACK, title, command, MODULE, ICON, folder / 'in.zip', target], check=True)
    (folder / 'in.zip').unlink()
    return target


def damaged_at(path, mark, offset, data):
    """Writes over the bytes `offset` behind the last place of the mark."""
    content = bytearray(path.read_bytes())
    at = content.rindex(mark) + offset
    content[at:at + len(data)] = data
    path.write_bytes(content)


def u32(number):
    return struct.pack('<I', number)


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
