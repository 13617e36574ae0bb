var re,Js,cl,Cn,al,Br,Zs,qr,Xs,fl,ul,If,ar=Symbol.for("pv"),Kr={},jr=[],zf=/^m(i|n|o|s|text|space)$/,dl=Array.isArray,pl=jr.
slice,jn=Object.assign;function Kn(e){e&&e.parentNode&&e.remove()}function ea(e,t,n){var o,r,s,a={},c=arguments.length;for(s in t)
s=="key"?o=t[s]:s=="ref"&&typeof e!="function"?r=t[s]:a[s]=t[s];return c>2&&(a.children=c>3?pl.call(arguments,2):n),sr(e,
a,o,r,null)}function sr(e,t,n,o,r){var s={type:e,props:t,key:n,ref:o,__k:null,__:null,__b:0,__e:null,__c:null,constructor:ar,__v:r||
++Js,__i:-1,__u:0};return!r&&re.vnode&&re.vnode(s),s}function me(e){return e.children}function $o(e,t){this.props=e,this.context=t,this.__g=0}function Pn(e,t){if(t==null)return e.
__&&Pn(e.__,e.__i+1);for(var n;t<e.__k.length;t++)if((n=e.__k[t])&&n.__e)return n.__e;return typeof e.type!="function"||
e.props.__P?null:Pn(e)}function Hf(e){var t,n=e.__v,o=n.__e,r=[],s=[],a=e.__P;a&&((t=jn({constructor:ar},n)).__v=n.__v+1,
re.vnode&&re.vnode(t),ml(a,t,n,e.__n,a.namespaceURI,32&n.__u?[o]:null,r,o||Pn(n),32&n.__u,s),t.__v=n.__v,t.__.__k[t.__i]=
t,la(r,t,s),n.__=n.__e=null,t.__e!=o&&ta(t))}function ta(e){if((e=e.__)&&e.__c&&!e.props.__P)return e.__e=null,e.__k.some(
function(t){return t&&(e.__e=t.__e)}),ta(e)}function Ys(e){(8&e.__g||(e.__g|=8,Cn.push(e),Br++))&&al==re.debounceRendering||
((al=re.debounceRendering)||queueMicrotask)(na)}function na(){try{for(var e,t=1;Cn.length;)Cn.length>t&&Cn.sort(Zs),e=Cn.
shift(),t=Cn.length,8&e.__g&&Hf(e)}finally{(Br=Cn.length)&&(al||queueMicrotask)(na)}}function oa(e,t,n,o,r,s,a,c,p,m,g){
var _,w,v,x,E,M,A=o.__k||jr,y=t.length;for(p=Vf(n,t,A,p,y),_=0;_<y;_++)(v=n.__k[_])!=null&&(w=~v.__i&&A[v.__i]||Kr,v.__i=
_,M=ml(e,v,w,r,s,a,c,p,m,g),x=v.__e,(w.ref!=v.ref||8&w.__u)&&(w.ref&&hl(w.ref,null,v,w),v.ref&&g.push(v.ref,v.__c||x,v)),
E=E||x,4&v.__u?(p=ra(v,p,e,!w.__v),w.__e&&(w.__e=null)):typeof v.type=="function"&&M!==void 0?p=M:x&&(p=x.nextSibling),v.
__u&=-21);return n.__e=E,p}function Vf(e,t,n,o,r){var s,a,c,p,m,g,_,w,v,x=n.length,E=x,M=0,A=0,y=e.__k=Array(r);for(s=0;s<
r;s++)(a=t[s])!=null&&typeof a!="boolean"&&typeof a!="function"?(typeof a!="object"||a.constructor===String?a=y[s]=sr(null,
a):dl(a)?a=y[s]=sr(me,{children:a}):a.constructor===ar&&a.__b?a=y[s]=sr(a.type,a.props,a.key,a.ref,a.__v):y[s]=a,p=s+M,a.
__=e,a.__b=e.__b+1,c=null,~(m=a.__i=Wf(a,n,p,E))&&(E--,(c=n[m])&&(c.__u|=2)),c&&c.__v?(a.__u|=16,m==p-1?M--:m==p+1?M++:m!=
p&&(m>p?M--:M++,A=1)):(~m||(r>x?M--:r<x&&M++),typeof a.type!="function"&&(a.__u|=4))):y[s]=null;if(A){for(g=[],_=[],s=0;s<
r;s++)if((a=y[s])&&16&a.__u){for(M=0,w=g.length;M<w;)g[v=M+w>>1]<a.__i?M=v+1:w=v;g[M]=a.__i,_[s]=M+1}for(M=g.length;s--;)
_[s]&&(_[s]==M?M--:y[s].__u|=4)}if(E)for(s=0;s<x;s++)!(c=n[s])||2&c.__u||(c.__e==o&&(o=Pn(c)),gl(c,c));return o}function ra(e,t,n,o){
var r,s,a,c;if(typeof e.type=="function"){if(e.props.__P)return t;if(r=e.__k)for(s=0;s<r.length;s++)r[s]&&(r[s].__=e,t=ra(
r[s],t,n,!1));return t}for(t&&!t.parentNode&&(t=Pn(e))&&!t.parentNode&&(t=null),a=e.__e,c=t;c&&c.nodeType==8;)c=c.nextSibling;
for(a!=c&&(!o&&n.moveBefore&&a.parentNode?n.moveBefore(a,t):n.insertBefore(a,t||null)),t=a;(t=t&&t.nextSibling)&&t.nodeType==
8&&!t.data.startsWith("$s"););return t}function Wf(e,t,n,o){var r,s=e.key,a=e.type,c=t[n],p=c&&!(2&c.__u);if(c===null&&s==null||p&&s==c.key&&a==c.type)return n;
if(o>(p?1:0)){for(r=n-1;r>=0;r--)if((c=t[r])&&!(2&c.__u)&&s==c.key&&a==c.type)return r;for(r=n+1;r<t.length;r++)if((c=t[r])&&
!(2&c.__u)&&s==c.key&&a==c.type)return r}return-1}function Qs(e,t,n){n==null&&(n=""),t[0]=="-"?e.setProperty(t,n):e[t]=n}
function Wr(e,t,n,o,r){var s,a;if(t=="style")if(typeof n=="string")e.style.cssText=n;else{if(typeof o=="string"&&(e.style.
cssText=o=""),o)for(t in o)n&&t in n||Qs(e.style,t);if(n)for(t in n)o&&n[t]==o[t]||Qs(e.style,t,n[t])}else if(t[0]=="o"&&
t[1]=="n")typeof n!="function"&&(n=null),typeof o!="function"&&(o=null),(e.__e||(e.__e={}))[t]=n,n&&o||(a=ul[t]||(ul[t]=
qf(t)),(e.__a||(e.__a={}))[t]=fl,s=t!=(t=t.replace(Xs,"$1")),(t=t.slice(2))[0]<"a"&&(t=t.toLowerCase()),n?e.addEventListener(
t,a,s):e.removeEventListener(t,a,s));else{if(r=="http://www.w3.org/2000/svg")t=t.replace(/xlink(H|:h)/,"h").replace(/sName$/,
"s");else if(t!="width"&&t!="height"&&t!="href"&&t!="list"&&t!="form"&&t!="tabIndex"&&t!="download"&&t!="rowSpan"&&t!="c\
olSpan"&&t!="role"&&t!="popover"&&t in e)try{return void(e[t]=n??"")}catch{}if(typeof n=="function")return;n==null||n===
!1&&t[4]!="-"?e.removeAttribute(t):e.setAttribute(t,t=="popover"&&n==1?"":n)}}function qf(e){return function(t){var n=this.
__e;if(n){if(n=n[e],t[qr]==null)t[qr]=fl++;else if(t[qr]<this.__a[e])return;return n(re.event?re.event(t):t)}}}function ml(e,t,n,o,r,s,a,c,p,m){
var g,_,w,v,x,E,M,A,y,$,S,Y,O,Q,q,X,W,P,U=t.type;if(t.constructor!==ar)return null;128&n.__u&&(p=32&n.__u,g=n.__c.__z)&&
(t.__u|=p,_=s=[],g.nodeType==8?c=Ur(g,s):s.push(g),c=s[0]||c),(g=re.__b)&&g(t);e:if(typeof U=="function"){w=a.length;try{
if(A=t.props,y=(g=U.prototype)&&g.render,$=(g=U.contextType)&&o[g.__c],S=g?$?$.props.value:g.__:o,(v=n.__c)?(t.__c=v,2&v.
__g&&(v.__g|=1)):(y?t.__c=v=new U(A,S):(t.__c=v=new $o(A,S),v.constructor=U,v.render=Bf),$&&$.sub(v),v.state||(v.state={}),
v.__n=o,v.__g|=8,v.__h=[],v.__k=[]),y&&(v.__s||(v.__s=v.state),U.getDerivedStateFromProps&&(v.__s==v.state&&(v.__s=jn({},
v.__s)),jn(v.__s,U.getDerivedStateFromProps(A,v.__s)))),x=v.props,E=v.state,v.__v=t,n.__c){if(A!==x&&y&&!U.getDerivedStateFromProps&&
v.componentWillReceiveProps&&v.componentWillReceiveProps(A,S),t.__v==n.__v&&!(8&v.__g)||!(4&v.__g)&&v.shouldComponentUpdate&&
v.shouldComponentUpdate(A,v.__s,S)===!1){t.__v!=n.__v&&(v.props=A,v.state=v.__s,v.__g&=-9),t.__e=n.__e,t.__k=n.__k,t.__k.
some(function(L){L&&(L.__=t)}),jr.push.apply(v.__h,v.__k),v.__k=[],v.__h.length&&a.push(v),c=Pn(n);break e}v.componentWillUpdate&&
v.componentWillUpdate(A,v.__s,S),y&&v.componentDidUpdate&&v.__h.push(function(){v.componentDidUpdate(x,E,M)})}else y&&!U.
getDerivedStateFromProps&&v.componentWillMount&&v.componentWillMount(),y&&v.componentDidMount&&v.__h.push(v.componentDidMount);
v.context=S,v.props=A,v.__P=e,v.__g&=-5,Y=re.__r,O=y?25:0;do v.__g&=-9,Y&&Y(t),g=v.render(v.props,v.state=v.__s,v.context);while(8&
v.__g&&++O<25);y&&(jr.push.apply(v.__h,v.__k),v.__k=[]),v.state=v.__s,v.getChildContext&&(o=jn({},o,v.getChildContext())),
y&&n.__c&&v.getSnapshotBeforeUpdate&&(M=v.getSnapshotBeforeUpdate(x,E)),Q=g&&g.type===me&&g.key==null?g.props.children:g,
A.__P&&(g=c,r=(e=A.__P).namespaceURI,p=s=null,n.props&&n.props.__P!=e&&(n.__k.some(function(L){L&&gl(L,L)}),n.__k=null),
c=n.__k?Pn(n,0):null),c=oa(e,dl(Q)?Q:[Q],t,n,o,r,s,a,c,p,m),A.__P&&(t.__e=null,c=g),t.__u&=-161,_&&_.some(Kn),v.__h.length&&
a.push(v),1&v.__g&&(v.__g&=-4)}catch(L){if(a.length=w,t.__v=null,p||s)if(L&&L.then){if(t.__u|=128|p,s){for(~(W=s.indexOf(
c||void 0))||(W=s.length);(P=s[W-1])&&P.nodeType==8;)W--;for(;W<s.length;W++)if(P=s[W])if(s[W]=null,q){if(P==X)break}else{
if(P.nodeType!=8)break;P.data.startsWith("$s")&&(X=Ur(q=P))}}if(!q){for(;c&&c.nodeType==8&&c.nextSibling;)c=c.nextSibling;
q=c}(g=Ur(q=t.__c.__z||(t.__c.__z=q)))?(t.__e=q,c=g):t.__e=c,c=c&&c.nextSibling}else s&&s.some(Kn);else t.__e=n.__e;t.__k||
(t.__k=n.__k||[]),L&&L.then||ia(t),re.__e(L,t,n)}}else c=t.__e=Uf(n.__e,t,n,o,r,s,a,p,m,e);return(g=re.diffed)&&g(t),c}function Ur(e,t){
if(e&&e.nodeType==8&&e.data.startsWith("$s"))for(var n=1;e=e.nextSibling;){if(e.nodeType==8){if(e.data.startsWith("$s"))
n++;else if(e.data.startsWith("/$s")&&!--n)return e}t&&t.push(e)}}function ia(e){e&&(e.__c&&(e.__c.__g|=4),e.__k&&e.__k.
some(ia))}function la(e,t,n){for(var o=0;o<n.length;)hl(n[o++],n[o++],n[o++]);re.__c&&re.__c(t,e),e.some(function(r){try{
e=r.__h,r.__h=[],e.some(function(s){s.call(r)})}catch(s){re.__e(s,r.__v)}})}function Uf(e,t,n,o,r,s,a,c,p,m){var g,_,w,v,
x,E,M,A,y=n.props||Kr,$=t.props,S=t.type;if(S=="svg"?r="http://www.w3.org/2000/svg":S=="math"?r="http://www.w3.org/1998/\
Math/MathML":r||(r="http://www.w3.org/1999/xhtml"),s){for(g=0;g<s.length;g++)if((x=s[g])&&(S?x.localName==S:x.nodeType==
3)){e=x,s[g]=null;break}}if(!e){if(A=m.ownerDocument||document,!S)return A.createTextNode($);e=A.createElementNS(r,S,$.is?
$:m),c&&(re.__m&&re.__m(t,s),c=!1),s=null}if(S){if(m=S=="template"&&e.content||e,s=S=="textarea"&&$.defaultValue!=null?null:
s&&pl.call(m.childNodes),!c&&s)for(y={},g=0;g<e.attributes.length;g++)y[(x=e.attributes[g]).name]=x.value;for(g in y)x=y[g],
g=="dangerouslySetInnerHTML"?w=x:g=="children"||g in $||g=="value"&&"defaultValue"in $||g=="checked"&&"defaultChecked"in
$||Wr(e,g,null,x,r);for(g in $)x=$[g],g=="children"?v=x:g=="dangerouslySetInnerHTML"?_=x:g=="value"?E=x:g=="checked"?M=x:
c&&typeof x!="function"||y[g]===x||Wr(e,g,x,y[g],r);_?(c||w&&(_.__html==w.__html||_.__html==e.innerHTML)||(e.innerHTML=_.
__html),t.__k=[]):(w&&(e.textContent=""),(S=="foreignObject"||r=="http://www.w3.org/1998/Math/MathML"&&zf.test(S))&&(r="\
http://www.w3.org/1999/xhtml"),oa(m,dl(v)?v:[v],t,n,o,r,s,a,s?s[0]:n.__k&&Pn(n,0),c,p),s&&s.some(Kn)),c&&S!="textarea"||
(g="value",S=="progress"&&E==null?e.removeAttribute(g):E==null||E===e[g]&&(S!="progress"||E)||Wr(e,g,E,y[g],r),g="checke\
d",M!=null&&M!=e[g]&&Wr(e,g,M,y[g],r))}else y===$||c&&e.data==$||(e.data=$);return e}function hl(e,t,n,o){try{typeof e==
"function"?t?t.__x=e(t)||1:o&&(o=o.__c||o.__e)&&(t=o.__x)&&(o.__x=null,typeof t=="function"?t():e(null)):e.current=t}catch(r){
re.__e(r,n)}}function gl(e,t,n){var o,r,s,a;if(re.unmount&&re.unmount(e),!(o=e.ref)||o.current&&o.current!=e.__e||hl(o,null,
t,e),o=e.__c){if(o.componentWillUnmount)try{o.componentWillUnmount()}catch(c){re.__e(c,t)}o.__P=o.__n=null}if(o=e.__k)for(a=
0;a<o.length;a++)o[a]&&gl(o[a],t,typeof e.type!="function"||n&&!e.props.__P);!n&&(o=e.__c)&&(o=o.__z)&&(r=Ur(o,s=[]))&&(o==
e.__e&&s.some(Kn),Kn(r),Kn(o)),n||Kn(e.__e),e.__e=e.__c=e.__=null}function Bf(e,t,n){return this.constructor(e,n)}function sa(e,t){
var n,o,r,s;re.__&&re.__(e,t),t.nodeType==9&&(t=t.documentElement),o=(n=e&&32&e.__u)?null:t.__k,t.__k=sr(me,{children:[e]}),
r=[],s=[],ml(t,t.__k,o||Kr,Kr,t.namespaceURI,o?null:t.firstChild?pl.call(t.childNodes):null,r,o?o.__e:t.firstChild,n,s),
la(r,t.__k,s),t.__k.props.children=null}re={__e:function(e,t,n,o){for(var r,s,a;t=t.__;)if((r=t.__c)&&!(1&r.__g)){r.__g|=4;try{if((a=(s=r.constructor)&&s.getDerivedStateFromError)&&
r.setState(s.getDerivedStateFromError(e)),r.componentDidCatch&&(r.componentDidCatch(e,o||{}),a=1),a&&8&r.__g)return void(r.
__g|=2)}catch(c){e=c}}throw Br=0,e}},Js=0,cl=function(e){return e!=null&&e.constructor===ar},$o.prototype.setState=function(e,t){
var n=this.__s;n&&n!=this.state||(n=this.__s=jn({},this.state)),typeof e=="function"&&(e=e(jn({},n),this.props)),e&&(jn(
n,e),this.__v&&(t&&this.__k.push(t),Ys(this)))},$o.prototype.forceUpdate=function(e){this.__v&&(this.__g|=4,e&&this.__h.
push(e),Ys(this))},$o.prototype.render=me,Cn=[],Br=0,Zs=function(e,t){return e.__v.__b-t.__v.__b},qr=Symbol(),Xs=/(PointerCapture)$|Capture$/i,
fl=0,ul={},If=0;var Gn,Re,vl,aa,_l=Object.is,Gr=0,va=[],bl=[],Ne=re,ua=Ne.__b,ca=Ne.__r,fa=Ne.diffed,da=Ne.__c,pa=Ne.unmount,ma=Ne.__;function cr(e,t){
Ne.__h&&Ne.__h(Re,e,Gr||t),Gr=0;var n=Re.__H||(Re.__H={__:[],__h:[]});return e>=n.__.length&&n.__.push({}),n.__[e]}function At(e){
return Gr=1,Kf(ba,e)}function Kf(e,t,n){var o=cr(Gn++,2);if(o.t=e,!o.__c&&(o.__=[n?n(t):ba(void 0,t),function(s){var a=(o.
__N||o.__)[0],c=o.t(a,s);_l(a,c)||(o.__N=[c,o.__[1]],o.__c.setState({}))}],o.__c=Re,!Re.__f)){Re.__f=!0;var r=Re.shouldComponentUpdate;
Re.shouldComponentUpdate=function(s,a,c){var p=this.__H;if(!p)return!0;var m=!1,g=this.props!=s;if(p.__.some(function(w){
w.__N&&(m=!0,_l(w.__[0],w.__N[0])||(g=!0))}),r){var _=r.call(this,s,a,c);return m?_||g:_}return!m||g}}return o.__}function Pe(e,t){
var n=cr(Gn++,3);!Ne.__s&&yl(n.__H,t)&&(n.__P=!0,n.__=e,n.u=t,Re.__H.__h.push(n))}function fr(e,t){var n=cr(Gn++,4);!Ne.
__s&&yl(n.__H,t)&&(n.__P=!1,n.__=e,n.u=t,Re.__h.push(n))}function Le(e){return Gr=5,Yr(function(){return{current:e}},[])}function Yr(e,t){var n=cr(Gn++,7);return yl(n.__H,t)&&(n.__=e(),n.__H=t),n.__}function _a(){var e=cr(Gn++,11);if(!e.__){for(var t=Re.__v;!t.__m&&t.__;)t=t.__;var n=t.__m||(t.__m=[0,0]);e.__="P"+n[0]+
"-"+n[1]++}return e.__}function jf(){var e;do{for(;e=bl.shift();)try{ur(e)}catch(n){Ne.__e(n,{__:(e=e.__P)&&e.__v})}for(;e=
va.shift();){var t=e.__H;if(e.__P&&t)try{t.__h.some(ur),t.__h.some(wl),t.__h=[]}catch(n){t.__h=[],Ne.__e(n,e.__v)}}}while(bl.
length)}Ne.__b=function(e){Re=null,ua&&ua(e)},Ne.__=function(e,t){e&&t.__k&&t.__k.__m&&(e.__m=t.__k.__m),ma&&ma(e,t)},Ne.
__r=function(e){ca&&ca(e),Gn=0;var t=(Re=e.__c).__H;t&&(vl==Re?Re.__h=[]:(t.__h.some(ur),t.__h.some(wl),Gn=0),t.__h=[],t.
__.some(function(n){n.__N&&(n.__=n.__N),n.u=n.__N=void 0})),vl=Re},Ne.diffed=function(e){fa&&fa(e);var t=e.__c;t&&t.__H&&
(t.__H.__h.length&&ga(va.push(t)),t.__H.__.some(function(n){n.u&&(n.__H=n.u)})),vl=Re=null},Ne.__c=function(e,t){t.some(
function(n){try{n.__h.some(ur),n.__h=n.__h.filter(function(o){return!o.__||wl(o)})}catch(o){n.__h=[function(){throw o}]}}),
da&&da(e,t)},Ne.unmount=function(e){pa&&pa(e);var t,n,o=e.__c;o&&o.__H&&(o.__H.__.some(function(r){try{if(r.__P&&r.__c){
if(n===void 0){for(n=e.__;n&&(!n.__c||!n.__c.__P);)n=n.__;n=n&&n.__c}r.__P=n,ga(bl.push(r))}else ur(r)}catch(s){t=s}}),o.
__H=void 0,t&&Ne.__e(t,o.__v))};var ha=typeof requestAnimationFrame=="function";function Gf(e){var t,n=function(){clearTimeout(
o),ha&&cancelAnimationFrame(t),setTimeout(e)},o=setTimeout(n,35);ha&&(t=requestAnimationFrame(n))}function ga(e){e!=1&&aa==
Ne.requestAnimationFrame||((aa=Ne.requestAnimationFrame)||Gf)(jf)}function ur(e){var t=Re,n=e.__c;typeof n=="function"&&
(e.__c=void 0,n()),Re=t}function wl(e){var t=Re;e.__c=e.__(),Re=t}function yl(e,t){return!e||e.length!=t.length||t.some(
function(n,o){return!_l(n,e[o])})}function ba(e,t){return typeof t=="function"?t(e):t}var Yf=Symbol.for("preact-signals");function Xr(){if(an>1)an--;else{var e,t=!1;for((function(){var r=Jr;for(Jr=void 0;r!==
void 0;){var s=r.S;if(s.v===r.v)for(var a=s.t;a!==void 0;a=a.x)a.i===r.i&&(a.i=s.i);r=r.o}})();pr!==void 0;){var n=pr;for(pr=
void 0,Qr++;n!==void 0;){var o=n.u;if(n.u=void 0,n.f&=-3,!(8&n.f)&&ya(n))try{n.c()}catch(r){t||(e=r,t=!0)}n=o}}if(Qr=0,an--,
t)throw e}}function kl(e){if(an>0)return e();xl=++Qf,an++;try{return e()}finally{Xr()}}var dr,Me=void 0;function Zt(e){var t=Me,
n=dr;Me=void 0,dr=void 0;try{return e()}finally{Me=t,dr=n}}var pr=void 0,an=0,Qr=0,Qf=0,xl=0,Jr=void 0,Zr=0;function wa(e){
if(Me!==void 0){var t=e.n;if(t===void 0||t.t!==Me)return t={i:0,S:e,p:Me.s,n:void 0,t:Me,e:void 0,x:void 0,r:t},Me.s!==void 0&&
(Me.s.n=t),Me.s=t,e.n=t,32&Me.f&&e.S(t),t;if(t.i===-1)return t.i=0,t.n!==void 0&&(t.n.p=t.p,t.p!==void 0&&(t.p.n=t.n),t.
p=Me.s,t.n=void 0,Me.s.n=t,Me.s=t),t}}function He(e,t){this.v=e,this.i=0,this.n=void 0,this.t=void 0,this.l=0,this.W=t?.
watched,this.Z=t?.unwatched,this.name=t?.name}He.prototype.brand=Yf;He.prototype.h=function(){return!0};He.prototype.S=function(e){
var t=this,n=this.t;n!==e&&e.e===void 0&&(e.x=n,this.t=e,n!==void 0?n.e=e:Zt(function(){var o;(o=t.W)==null||o.call(t)}))};
He.prototype.U=function(e){var t=this;if(this.t!==void 0){var n=e.e,o=e.x;n!==void 0&&(n.x=o,e.e=void 0),o!==void 0&&(o.
e=n,e.x=void 0),e===this.t&&(this.t=o,o===void 0&&Zt(function(){var r;(r=t.Z)==null||r.call(t)}))}};He.prototype.subscribe=
function(e){var t=this;return Qe(function(){var n=t.value;Zt(function(){return e(n)})},{name:"sub"})};He.prototype.valueOf=
function(){return this.value};He.prototype.toString=function(){return this.value+""};He.prototype.toJSON=function(){return this.
value};He.prototype.peek=function(){var e=this;return Zt(function(){return e.value})};Object.defineProperty(He.prototype,
"value",{get:function(){var e=wa(this);return e!==void 0&&(e.i=this.i),this.v},set:function(e){if(e!==this.v){if(Qr>100)
throw new Error("Cycle detected");(function(n){an!==0&&Qr===0&&n.l!==xl&&(n.l=xl,Jr={S:n,v:n.v,i:n.i,o:Jr})})(this),this.
v=e,this.i++,Zr++,an++;try{for(var t=this.t;t!==void 0;t=t.x)t.t.N()}finally{Xr()}}}});function J(e,t){return new He(e,t)}
function ya(e){for(var t=e.s;t!==void 0;t=t.n)if(t.S.i!==t.i||!t.S.h()||t.S.i!==t.i)return!0;return!1}function xa(e){for(var t=e.
s;t!==void 0;t=t.n){var n=t.S.n;if(n!==void 0&&(t.r=n),t.S.n=t,t.i=-1,t.n===void 0){e.s=t;break}}}function ka(e){for(var t=e.
s,n=void 0;t!==void 0;){var o=t.p;t.i===-1?(t.S.U(t),o!==void 0&&(o.n=t.n),t.n!==void 0&&(t.n.p=o)):n=t,t.S.n=t.r,t.r!==
void 0&&(t.r=void 0),t=o}e.s=n}function Yn(e,t){He.call(this,void 0,t),this.x=e,this.s=void 0,this.g=Zr-1,this.f=4}Yn.prototype=
new He;Yn.prototype.h=function(){if(this.f&=-3,1&this.f)return!1;if((36&this.f)==32||(this.f&=-5,this.g===Zr))return!0;if(this.
g=Zr,this.f|=1,this.i>0&&!ya(this))return this.f&=-2,!0;var e=Me;try{xa(this),Me=this;var t=this.x();(16&this.f||this.v!==
t||this.i===0)&&(this.v=t,this.f&=-17,this.i++)}catch(n){this.v=n,this.f|=16,this.i++}return Me=e,ka(this),this.f&=-2,!0};
Yn.prototype.S=function(e){if(this.t===void 0){this.f|=36;for(var t=this.s;t!==void 0;t=t.n)t.S.S(t)}He.prototype.S.call(
this,e)};Yn.prototype.U=function(e){if(this.t!==void 0&&(He.prototype.U.call(this,e),this.t===void 0)){this.f&=-33;for(var t=this.
s;t!==void 0;t=t.n)t.S.U(t)}};Yn.prototype.N=function(){if(!(2&this.f)){this.f|=6;for(var e=this.t;e!==void 0;e=e.x)e.t.
N()}};Object.defineProperty(Yn.prototype,"value",{get:function(){if(1&this.f)throw new Error("Cycle detected");var e=wa(
this);if(this.h(),e!==void 0&&(e.i=this.i),16&this.f)throw this.v;return this.v}});function tt(e,t){return new Yn(e,t)}function Sa(e){
var t=e.j;if(e.j=void 0,typeof t=="function"){an++;var n=Me;Me=void 0;try{t()}catch(o){throw e.f&=-2,e.f|=8,Sl(e),o}finally{
Me=n,Xr()}}}function Sl(e){for(var t=e.s;t!==void 0;t=t.n)t.S.U(t);e.x=void 0,e.s=void 0,Sa(e)}function Jf(e){if(Me!==this)
throw new Error("Out-of-order effect");ka(this),Me=e,this.f&=-2;try{8&this.f&&Sl(this)}finally{Xr()}}function Do(e,t){this.
x=e,this.j=void 0,this.s=void 0,this.u=void 0,this.f=32,this.name=t?.name,dr&&dr.push(this)}Do.prototype.c=function(){var e=this.
S();try{if(8&this.f||this.x===void 0)return;var t=this.x();typeof t=="function"&&(this.j=t)}finally{e()}};Do.prototype.S=
function(){if(1&this.f)throw new Error("Cycle detected");this.f|=1,this.f&=-9,Sa(this),xa(this),an++;var e=Me;return Me=
this,Jf.bind(this,e)};Do.prototype.N=function(){2&this.f||(this.f|=2,this.u=pr,pr=this)};Do.prototype.d=function(){this.
f|=8,1&this.f||Sl(this)};Do.prototype.dispose=function(){this.d()};function Qe(e,t){var n=new Do(e,t);try{n.c()}catch(r){
throw n.d(),r}var o=n.d.bind(n);return o[Symbol.dispose]=o,o}var Ta,ti,ei,Zf=typeof window<"u"&&!!window.__PREACT_SIGNALS_DEVTOOLS__;var Ma=[];Qe(function(){Ta=this.N})();function Lo(e,t){re[e]=t.bind(null,re[e]||function(){})}function mr(e){if(ei){var t=ei;
ei=void 0,t()}ei=e&&e.S()}function Ea(e){var t=this,n=e.data,o=An(n);o.name="ReactiveDom",o.value=n;var r=Yr(function(){
for(var c=t,p=t.__v;p=p.__;)if(p.__c){p.__c.__$f|=4;break}var m=tt(function(){var v=o.value.value;return v===0?0:v===!0?
"":v||""}),g=tt(function(){return!Array.isArray(m.value)&&!cl(m.value)}),_=Qe(function(){if(this.N=Ca,g.value){var v=m.value;
c.__v&&c.__v.__e&&c.__v.__e.nodeType===3&&(c.__v.__e.data=v)}}),w=t.__$u.d;return t.__$u.d=function(){_(),w.call(this)},
[g,m]},[]),s=r[0],a=r[1];return s.value?a.peek():a.value}Ea.displayName="ReactiveTextNode";Object.defineProperties(He.prototype,
{constructor:{configurable:!0,value:ea(me,null).constructor},type:{configurable:!0,value:Ea},props:{configurable:!0,get:function(){
var e=this;return{data:{get value(){return e.value}}}}},__b:{configurable:!0,value:1}});Lo("__b",function(e,t){if(mr(),ti=
void 0,typeof t.type=="string"){var n,o=t.props;for(var r in o)if(r!=="children"){var s=o[r];s instanceof He&&(n||(t.__np=
n={}),n[r]=s,o[r]=s.peek())}}e(t)});Lo("__r",function(e,t){if(e(t),t.type!==me){mr();var n,o=t.__c;o&&(o.__$f&=-2,(n=o.__$u)===
void 0&&(o.__$u=n=(function(r,s){var a;return Qe(function(){a=this},{name:s}),a.c=r,a})((function(r){return function(){var s;
Zf&&((s=this.y)==null||s.call(this)),r.__$f|=1,r.setState({})}})(o),typeof t.type=="function"?t.type.displayName||t.type.
name:""))),ti=o,mr(n)}});Lo("__e",function(e,t,n,o){mr(),ti=void 0,e(t,n,o)});Lo("diffed",function(e,t){mr(),ti=void 0;var n;
if(typeof t.type=="string"&&(n=t.__e)){var o=t.__np,r=t.props,s=n.U;if(s)for(var a in s){var c=s[a];c===void 0||o&&a in o||
(c.d(),s[a]=void 0)}if(o){s||(s={},n.U=s);for(var p in o){var m=s[p],g=o[p];m===void 0?(m=Xf(n,p,g,r),s[p]=m):m.o(g,r)}}}
e(t)});function Xf(e,t,n,o){var r=t in e&&e.ownerSVGElement===void 0,s=J(n);return{o:function(a,c){s.value=a,o=c},d:Qe(function(){
this.N=Ca;var a=s.value.value;o[t]!==a&&(o[t]=a,r?e[t]=a:a!=null&&(a!==!1||t[4]==="-")?e.setAttribute(t,a):e.removeAttribute(
t))})}}Lo("unmount",function(e,t){if(typeof t.type=="string"){var n=t.__e;if(n){var o=n.U;if(o){n.U=void 0;for(var r in o){
var s=o[r];s&&s.d()}}}var a=t.__np;if(a){var c=t.props;for(var p in a)c[p]=a[p]}t.__np=void 0}else{var m=t.__c;if(m){m.__$f|=
8;var g=m.__$u;g&&(m.__$u=void 0,g.d())}}e(t)});Lo("__h",function(e,t,n,o){o<3&&(t.__$f|=2),e(t,n,o)});$o.prototype.shouldComponentUpdate=
function(e,t){if(this.__R)return!0;var n=this.__$u,o=n&&n.s!==void 0;for(var r in t)return!0;if(this.__f||typeof this.u==
"boolean"&&this.u===!0){var s=2&this.__$f;if(!(o||s||4&this.__$f)||1&this.__$f)return!0}else if(!(o||4&this.__$f)||3&this.
__$f)return!0;for(var a in e)if(a!=="__source"&&e[a]!==this.props[a])return!0;for(var c in this.props)if(!(c in e))return!0;
return!1};function An(e,t){return Yr(function(){return J(e,t)},[])}var ed=function(e){queueMicrotask(function(){queueMicrotask(e)})};function td(){kl(function(){for(var e;e=Ma.shift();)Ta.call(e)})}function Ca(){Ma.push(this)===1&&(re.requestAnimationFrame||
ed)(td)}var hr=["overview","events","queues","limits","check","cluster"],ni={overview:"Overview",events:"Events",queues:"Queues",
limits:"Limits",check:"Check",cluster:"Cluster"},oi=J(location.hash);addEventListener("hashchange",()=>{oi.value=location.
hash});var Pa=tt(()=>oi.value.replace(/^#\/?/,"").split("/")),Xt=tt(()=>{let[e]=Pa.value;return hr.find(t=>t===e)??"over\
view"}),un=tt(()=>{let[e,t,n]=Pa.value;return e==="events"&&/^\d+$/.test(t??"")&&/^\d+$/.test(n??"")?{dsid:t,id:n}:void 0});
function Qn(e){location.hash=`#/${e}`}var Tl={takesFocus:!0};function No(e,t,n=!0){Tl.takesFocus=n;let o=`#/events/${e}/${t}`;
un.value?history.replaceState(null,"",o):history.pushState(null,"",o),oi.value=o}function ri(){history.replaceState(null,
"","#/events"),oi.value="#/events"}var nd=/"[^"\\]*(?:\\.[^"\\]*)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;function od(e){return e.length<16||!/^-?\d+$/.test(e)||
Number.isSafeInteger(Number(e))?e:`"${e}"`}function gr(e){return JSON.parse(e.replace(nd,od))}function ii(e,t){let n=BigInt(
e),o=BigInt(t);return n<o?-1:n>o?1:0}function li(e,t){let n=BigInt(e)-BigInt(t);return(n>0n?n:0n).toString()}var rd=1e4,nt=class extends Error{constructor(n,o,r){super(o.detail||o.title||`The server answered with status ${n}.`);this.
status=n;this.problem=o;this.retryAfter=r}status;problem;retryAfter},si=class extends Error{};async function id(e){try{return gr(
await e.text())}catch{return{}}}async function Ml(e,t,n={}){let o={...n.headers};e.token&&(o.Authorization=`Bearer ${e.token}`),
n.body!==void 0&&(o["Content-Type"]="application/json");let r;try{r=await fetch(t,{method:n.method??"GET",headers:o,body:n.
body===void 0?null:JSON.stringify(n.body),signal:n.signal??null,cache:"no-store",credentials:"same-origin"})}catch(a){throw new si(
"The server does not answer.",{cause:a})}if(r.ok)return r;let s=Number(r.headers.get("Retry-After")??Number.NaN);throw new nt(
r.status,await id(r),Number.isFinite(s)?s:void 0)}async function Aa(e,t,n={}){let o=AbortSignal.timeout(n.patience??rd),
r=n.signal?AbortSignal.any([n.signal,o]):o,s=await Ml(e,t,{...n,signal:r}),a;try{a=await s.text()}catch(c){throw new si(
"The server broke off its answer.",{cause:c})}try{return gr(a)}catch{throw new nt(s.status,{detail:`The answer to ${t} i\
s not JSON.`},void 0)}}function $a(e,t){let n=Number.NEGATIVE_INFINITY;return e.filter(({time:o,queues:r})=>{let s=t-o;return s>86400?!1:r.size===
0?!0:s>1200&&o-n<30?!1:(n=o,!0)})}var cn=J([]);function ld(e,t){return e===void 0?void 0:Math.max(0,t-Number(e))}function sd(e,t){let n=new Map,o={count:e.
count,oldestAge:void 0};for(let r of e.queues){let s=ld(r.oldest,t);n.set(String(r.dsid),{count:r.count,oldestAge:s}),s!==
void 0&&(o.oldestAge=Math.max(o.oldestAge??0,s))}return n.set("all",o),n}var ad=90;function El(e=Date.now()/1e3){let t=cn.
value.at(-1);t&&t.queues.size>0&&(cn.value=[...cn.value,{time:e,queues:new Map}])}function Da(e){let t=Date.now()/1e3,n=cn.
value.at(-1);n&&t-n.time>ad&&El(n.time+1),cn.value=[...$a(cn.value,t),{time:t,queues:sd(e,t)}]}function La(){cn.value=[]}var Cl="eventd.token",Ae=J("starting"),fn=J(),Ro=J(""),vr=J(void 0),Ra=tt(()=>vr.value!==void 0),Na={read:1,write:2,admin:3};
function ai(e){return fn.value!==void 0&&Na[fn.value.role]>=Na[e]}function Pl(){let e=/^#token=(.+)$/.exec(location.hash);
if(!e?.[1])return!1;let t=e[1];try{t=decodeURIComponent(t)}catch{}return Al(t),history.replaceState(null,"",location.pathname+
location.search),!0}function Al(e){vr.value=e,e===void 0?sessionStorage.removeItem(Cl):sessionStorage.setItem(Cl,e)}function Oa(){
vr.value=sessionStorage.getItem(Cl)??void 0}function $l(e){Al(void 0),fn.value=void 0,Ro.value=e,Ae.value="out"}function Fa(){
$l("")}function ud(){return{token:vr.value}}async function Ia(e){let t=ud();try{return await e(t)}catch(n){throw n instanceof
nt&&n.status===401&&t.token===vr.value&&$l(t.token===void 0?"":"The server refused this token."),n}}function $t(e,t){return Ia(
n=>Aa(n,e,t))}function za(e,t){return Ia(n=>Ml(n,e,t))}async function _r(){try{fn.value=await $t("/v1/whoami"),Ro.value=
"",Ae.value="in"}catch(e){if(!(e instanceof nt&&e.status===401))throw e}}async function Ha(e){let t=e.trim();if(!/^[\x21-\x7e]+$/.
test(t)){Ro.value="A token consists of visible ASCII characters, without blanks.";return}Al(t);try{await _r()}catch(n){$l(
n instanceof Error?n.message:String(n))}}var cd=2e3,fd=1e4,dd=1e3,pd=1e4,ot=J({is:"unknown"}),Ve=J(),Ht=J(),en=J(),Oo=J(""),dn=J(),Ll=tt(()=>Ve.value?.queues.find(
e=>String(e.dsid)==="0")),Va;function md(e){return new Promise(t=>{let n=setTimeout(t,e);Va=()=>{clearTimeout(n),t()}})}
function Jn(){Va?.()}function hd(e){let t=e instanceof Error?e.message:String(e);e instanceof nt?ot.value={is:"troubled",
why:t}:ot.value.is!=="down"&&(ot.value={is:"down",since:Date.now(),why:t},El())}function gd(e){let t=Ve.value;t&&t.startTime!==
e.startTime&&(dn.value=e.startTime,Ht.value=void 0),Ve.value=e,en.value=e.cluster,ot.value={is:"up"},Da(e)}var Dl=0;async function vd(){
if(!(Date.now()<Dl)){Dl=Date.now()+fd;try{await $t("/readyz"),Oo.value=""}catch(e){e instanceof nt&&(Oo.value=e.message)}}}
async function _d(){let e=await $t("/v1/cluster");en.value=e.clustered?e:void 0}async function bd(){try{gd(await $t("/v1\
/stats"))}catch(e){throw e instanceof nt&&Ae.value==="in"&&await _d().catch(()=>{}),e}}async function wd(){Ae.value==="s\
tarting"&&await _r(),Ae.value==="in"&&(await bd(),Ht.value||(Ht.value=await $t("/v1/limits")),await vd())}function yd(e,t){
return e instanceof nt&&e.retryAfter!==void 0?e.retryAfter*1e3:Math.min(pd,Math.max(dd,t*1.6))}async function Wa(){let e=0;
for(;;){try{await wd(),e=0}catch(t){hd(t),e=yd(t,e)}await md(e||cd)}}function qa(){Ve.value=void 0,Ht.value=void 0,en.value=
void 0,Oo.value="",dn.value=void 0,ot.value={is:"unknown"},Dl=0,La()}function Nl(e,t,n){let o=`eventd.${e}`,r=t.find(a=>a===localStorage.getItem(o)),s=J(r??n);return Qe(()=>localStorage.setItem(
o,s.value)),s}var ui=["auto","light","dark"],pn=Nl("theme",ui,"auto"),Ee=Nl("clock",["local","utc"],"local"),br=Nl("shor\
tcuts",["on","off"],"on");function ci(){pn.value=ui[(ui.indexOf(pn.value)+1)%ui.length]??"auto"}function fi(){Ee.value=Ee.
value==="utc"?"local":"utc"}function Ua(){Qe(()=>{document.documentElement.dataset.theme=pn.value})}var Rl=class{rest="";id="";data=[];feed(t){let n=(this.rest+t).split(/\r\n|\n|\r(?!$)/);this.rest=n.pop()??"";let o=[];for(let r of n){
let s=this.take(r);s&&o.push(s)}return o}take(t){if(t===""){let s=this.data.length>0?{id:this.id,data:this.data.join(`
`)}:void 0;return this.data=[],s}let n=t.indexOf(":"),o=n<0?t:t.slice(0,n),r=n<0?"":t.slice(n+1).replace(/^ /,"");o==="d\
ata"&&this.data.push(r),o==="id"&&(this.id=r)}};async function Ba(e,t,n){let o=e.getReader(),r=new TextDecoder,s=new Rl;
for(;;){let{done:a,value:c}=await o.read();if(a)return;n();let p=s.feed(r.decode(c,{stream:!0}));p.length>0&&t(p)}}function Ka(e,t){let n=e.trim().toLowerCase();return o=>t.size>0&&!t.has(o.kind)?!1:n===""?!0:String(o.id)===n||o.kind.toLowerCase().
includes(n)||o.eventString.toLowerCase().includes(n)}var xd=500,Za=2e3,wr=2e4,ja=1e3,kd=10,Sd=150,Ga=4e4,Ya=500,Td=15e3,Md=6e4,mn=J("off"),yr=J(""),lt=J("0"),Vt=J(!1),Je=J([]),
Xn=J([]),eo=J(0),nn=J(),Io=J(""),$n=J(new Set),Xa=tt(()=>Je.value.length>=wr),xr=tt(()=>Je.value.filter(Ka(Io.value,$n.value))),
Fo=Za,tn,di=[],pi;function Ed(){pi=void 0;let e=di;if(di=[],Vt.value){let t=[...Xn.value,...e];eo.value+=Math.max(0,t.length-
wr),Xn.value=t.slice(-wr)}else eu(e)}function eu(e){if(e.length===0)return;let t=[...e.reverse(),...Je.value];t.length>Fo&&
(nn.value=String(t[Fo]?.id)),Je.value=t.slice(0,Fo)}function Cd(e){for(let t of e){let n=gr(t.data);tn!==void 0&&ii(n.id,
tn)<=0||(tn=String(n.id),di.push(n))}pi??=setTimeout(Ed,Sd)}function Pd(){Vt.value=!1;let e=Xn.value;Xn.value=[],eo.value>
0&&(Je.value=[],nn.value=li(e[0]?.id??1,1)),eo.value=0,eu(e)}function mi(){Vt.value?Pd():Vt.value=!0}function Qa(){clearTimeout(
pi),pi=void 0,di=[],tn=void 0,Fo=Za,Je.value=[],Xn.value=[],eo.value=0,nn.value=void 0}function tu(e){let t=Ve.value?.queues.
find(n=>String(n.dsid)===e);return String(t?.highestId??0)}async function Ad(e,t,n){let o=`/v1/queues/${e}/events/stream`;
tn===void 0&&(tn=li(tu(e),xd),nn.value=tn);let r=new AbortController,s=setTimeout(()=>r.abort(),Ga),a=()=>{clearTimeout(
s),s=setTimeout(()=>r.abort(),Ga)};try{let c=await za(o,{headers:{Accept:"text/event-stream","Last-Event-ID":tn},signal:AbortSignal.
any([t,r.signal])});n();let p=m=>t.aborted||Cd(m);c.body&&await Ba(c.body,p,a)}finally{clearTimeout(s)}}var nu;function $d(e,t){
return new Promise(n=>{let o=setTimeout(n,e);nu=n,t.addEventListener("abort",()=>{clearTimeout(o),n()})})}async function Dd(e,t){
let n=Ya;for(;!t.aborted;){mn.value="connecting";let o=0;try{await Ad(e,t,()=>{mn.value="live",yr.value="",n=Ya})}catch(r){
yr.value=r instanceof nt?r.message:"",r instanceof nt&&(o=(r.retryAfter??0)*1e3)}if(t.aborted)return;mn.value="broken",await $d(
Math.max(o,n*(.75+Math.random()/2)),t),n=Math.min(Td,n*2)}}var Ol=J(!0),Ja;document.addEventListener("visibilitychange",
()=>{clearTimeout(Ja),document.visibilityState==="visible"?Ol.value=!0:Ja=setTimeout(()=>Ol.value=!1,Md)});function Ld(){
return dn.value!==void 0&&tn!==void 0&&ii(tu(lt.value),tn)<0}function ou(){let e=tt(()=>ot.value.is==="up");Qe(()=>{e.value&&
nu?.()});let t=tt(()=>Ae.value==="in"&&Ve.value!==void 0),n="";Qe(()=>{let o=lt.value;if(!t.value){mn.value="off",Zt(Qa);
return}if(dn.value,(o!==n||Zt(Ld))&&Zt(Qa),n=o,!Ol.value){mn.value="resting";return}let r=new AbortController;return Zt(
()=>{Dd(o,r.signal)}),()=>r.abort()})}var Zn=J("");async function Nd(e,t){let n=t;for(let o=0;o<kd&&n!=="0";++o){let r=li(
n,ja),s=`/v1/queues/${e}/events?after=${r}&limit=${ja}`,a=await $t(s);nn.value=r;let c=a.events.filter(p=>ii(p.id,n)<=0);
if(c.length>0)return c;n=r}return[]}async function ru(){let e=nn.value,t=lt.value;if(!(e===void 0||Zn.value==="asking")){
Zn.value="asking";try{let n=await Nd(t,e);if(t!==lt.value)return;Fo=Math.min(wr,Math.max(Fo,Je.value.length+n.length)),Je.
value=[...Je.value,...n.reverse()].slice(0,wr),Zn.value=n.length>0||nn.value==="0"?"":"none"}catch{Zn.value="failed"}}}var Rd=String.raw`\u0000-\u001f\u007f-\u009f`,Od=String.raw`\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff`,Fd=new RegExp(
`[${Rd}${Od}]`,"g");function Id(e){let t=e.charCodeAt(0);return t<32?String.fromCharCode(9216+t):t===127?"␡":`<U+${t.toString(
16).toUpperCase().padStart(4,"0")}>`}function _e(e){return e.replace(Fd,Id)}function G(e){let t=String(e);return/^-?\d+$/.test(t)?t.replace(/\B(?=(\d{3})+$)/g," "):t}function Dt(e){let t=["B","K\
iB","MiB","GiB","TiB","PiB"],n=Number(e),o=0;for(;n>=1024&&o+1<t.length;++o)n/=1024;return`${o===0?n:n.toFixed(1)} ${t[o]}`}
function hn(e){let t=Math.max(0,Math.round(e));if(t<60)return`${t} s`;if(t<3600)return`${Math.floor(t/60)} min ${t%60}\
 s`;if(t<86400)return`${Math.floor(t/3600)} h ${Math.floor(t%3600/60)} min`;let n=Math.floor(t/86400),o=Math.floor(t%
86400/3600);return n>=100?`${G(n)} d`:`${n} d ${o} h`}function iu(e){return hn(e).replace(/ 0\u00a0\w+$/,"")}function Fl(...e){
let t=Math.max(...e)<1,n=t?" /min":" /s";return o=>{let r=t?o*60:o;return r===0?`0${n}`:r>=100?`${G(Math.round(r))}${n}`:
`${r.toFixed(r<1?2:1)}${n}`}}function kr(e){return String(e).padStart(2,"0")}function hi(e){return Dn(e).replace(/^.*\//,
"").replaceAll("_"," ")}function Dn(e){return e==="utc"?"UTC":new Intl.DateTimeFormat().resolvedOptions().timeZone}function rt(e,t){
let n=new Date(Number(e)*1e3);return Number.isNaN(n.getTime())||n.getUTCFullYear()>9999?`${e} s`:t==="utc"?n.toISOString().
slice(0,19).replace("T"," "):`${n.getFullYear()}-${kr(n.getMonth()+1)}-${kr(n.getDate())} ${kr(n.getHours())}:${kr(n.getMinutes())}\
:${kr(n.getSeconds())}`}function gi(e,t){return rt(e/1e3,t).slice(11)}function lu(e,t,n=Date.now()/1e3){let o=rt(e,t),r=rt(
n,t).slice(0,10);return o.startsWith(r)?o.slice(11):o.slice(0,10)}function zo(e){return hn(Date.now()/1e3-Number(e))}var vi=J("");function gn(e){vi.value=e===vi.value?`${e} `:e}var zd=Symbol.for("pv"),Hd=0;function l(e,t,n,o,r,s){t||(t={});var a,c,p=t;if("ref"in p&&typeof e!="function")for(c in p={},t)c=="ref"?a=t[c]:p[c]=t[c];
var m={type:e,props:p,key:n,ref:a,__k:null,__:null,__b:0,__e:null,__c:null,constructor:zd,__v:--Hd,__i:-1,__u:0};return(r||
s)&&(m.__source=r,m.__self=s),re.vnode&&re.vnode(m),m}function _i({open:e,title:t,onClose:n,children:o}){let r=Le(null),s=_a();return Pe(()=>{e&&!r.current?.open&&r.current?.
showModal(),e||r.current?.close()},[e]),l("dialog",{ref:r,"aria-labelledby":s,onClose:n,children:[l("h2",{id:s,children:t}),
e?o:null]})}var Vd=10*6e4,Wd={error:"bad",warning:"warn"};function qd({findings:e}){return l("table",{class:"data findings",children:[
l("thead",{children:l("tr",{children:[l("th",{scope:"col",children:"level"}),l("th",{scope:"col",children:"code"}),l("th",
{scope:"col",children:"what was found"})]})}),l("tbody",{children:e.map((t,n)=>l("tr",{children:[l("td",{children:l("spa\
n",{class:`badge ${Wd[t.level]??""}`,children:t.level})}),l("td",{class:"figure",children:t.code}),l("td",{class:"wide",
children:_e(t.message)})]},n))})]})}function su(e){let t=e.findings.length,n=e.checked==="database"?"The database is":"T\
he queues are";if(t===0)return`${n} in order: nothing was found.`;let o=`${G(t)} finding${t===1?"":"s"}`;return e.fix?e.
remaining===0?`${o}; nothing remains to be repaired.`:`${o}; ${G(e.remaining)} could not be repaired.`:`${o}. Nothing wa\
s changed.`}function Ud({report:e,at:t}){let n=e.findings.length===0||e.fix&&e.remaining===0;return l(me,{children:[l("p",
{class:n?"verdict ok":"verdict bad","data-testid":"verdict",children:[su(e)," ",l("span",{class:"muted",children:rt(t,Ee.
value)})]}),e.findings.length>0?l(qd,{findings:e.findings}):null]})}function Bd(){let e=An(!1),t=An(void 0),n=async o=>{
e.value=!0;let r=()=>Date.now()/1e3;try{let a=await $t("/v1/check",{method:"POST",body:{fix:o},patience:Vd});t.value={report:a,
at:r()},gn(su(a))}catch(s){t.value={failure:s instanceof Error?s.message:String(s),at:r()}}e.value=!1};return{busy:e.value,
done:t.value,run:n}}function Kd({open:e,answer:t}){return l(_i,{open:e,title:"Repair the queues?",onClose:()=>t(!1),children:[
l("p",{children:"Rows filed under a wrong id get a new one. Rows whose event string cannot be read are deleted. This can\
not be undone: copy the database before, should anybody want to look at them."}),l("div",{class:"actions",children:[l("b\
utton",{type:"button",onClick:()=>t(!1),children:"Leave as it is"}),l("button",{type:"button",class:"danger",onClick:()=>t(
!0),children:"Repair"})]})]})}function jd(){let e=An(!1),{busy:t,done:n,run:o}=Bd(),r=a=>{e.value=!1,a&&o(!0)},s=n?.report&&
n.report.findings.length>0&&!n.report.fix;return l(me,{children:[l("div",{class:"actions start",children:[l("button",{type:"\
button",class:"primary",disabled:t,onClick:()=>o(!1),children:t?"Looking …":"Look for damage"}),s?l("button",{type:"bu\
tton",class:"danger",disabled:t,onClick:()=>e.value=!0,children:"Repair …"}):null]}),n?.failure?l("p",{class:"banner b\
ad",role:"alert",children:n.failure}):null,n?.report?l(Ud,{report:n.report,at:n.at}):null,l(Kd,{open:e.value,answer:r})]})}
function au(){return l("section",{class:"card","aria-labelledby":"check-title",children:[l("h2",{id:"check-title",children:"\
Check"}),l("p",{class:"muted",children:["Looks through all queues for events that cannot be read or are filed under a wr\
ong id. Looking changes nothing; a repair asks first.",en.value?" In cluster mode this is about the database, the copy t\
o fall back to: the cluster keeps its queues itself.":""]}),ai("admin")?l(jd,{}):l("p",{children:"This needs the role ad\
min."})]})}function to({name:e,value:t,most:n,text:o}){let r=n>0?Math.min(1,Math.max(0,t/n)):0,s=r>=.9?"bad":r>=.7?"warn":"ok";return l(
"div",{class:`meter ${s}`,children:[l("div",{class:"meter-text",children:[l("span",{children:e}),l("span",{class:"figure",
children:o})]}),l("div",{class:"bar",role:"meter","aria-label":e,"aria-valuemin":0,"aria-valuemax":n,"aria-valuenow":Math.
min(t,n),"aria-valuetext":o,children:l("div",{style:{width:`${100*r}%`}})})]})}function no({name:e,text:t}){return l("di\
v",{class:"meter",children:l("div",{class:"meter-text",children:[l("span",{children:e}),l("span",{class:"figure muted",children:t})]})})}function Gd({member:e}){let{databaseBytes:t,quotaBytes:n,databaseBytesInUse:o}=e,r="Database";return n===0?l(no,{name:r,
text:Dt(t)}):l(me,{children:[l(to,{name:r,value:t,most:n,text:`${Dt(t)} of ${Dt(n)}`}),l("p",{class:"note",children:[Dt(
o)," in use"]})]})}function Yd({member:e}){let t=e.reachable?e.leader?"leader":"member":"not reachable",n=e.reachable?e.
leader?"accent":"":"bad";return l("li",{class:"card",children:[l("div",{class:"card-head",children:[l("h3",{children:_e(
e.name||e.endpoint)}),l("span",{class:`badge ${n}`,children:t})]}),e.name?l("p",{class:"muted",children:[_e(e.endpoint),
", version ",_e(e.version)]}):null,e.reachable?l(Gd,{member:e}):null,e.failure?l("p",{class:"problem",children:_e(e.failure)}):
null]})}function Qd(e){let t=e.filter(r=>r.reachable),n=Math.floor(e.length/2)+1,o=t.some(r=>r.leader)?"":" None of them\
 leads.";return`${t.length} of ${e.length} members answer; ${n} are needed.${o}`}function uu(){let e=en.value;return e?l(
"section",{"aria-labelledby":"cluster-title",children:[l("h2",{id:"cluster-title",children:"Cluster"}),l("p",{class:"pag\
e-note","data-testid":"quorum",children:Qd(e.members)}),e.failure?l("p",{class:"banner bad",role:"alert",children:_e(e.failure)}):
null,e.alarms.map(t=>l("p",{class:"banner warn",children:[l("strong",{children:"Alarm:"})," ",_e(t)]},t)),l("ul",{class:"\
members",children:e.members.map(t=>l(Yd,{member:t},t.endpoint))})]}):l("section",{class:"card","aria-labelledby":"cluste\
r-title",children:[l("h2",{id:"cluster-title",children:"Cluster"}),l("p",{class:"muted",children:"This server keeps its \
queues in its own database; it is in no cluster."})]})}var Ln=["legacy","imagerep","lsustatus","serverstatus","capacity","abilities","activity","audit","kelp"];function Jd(e,t){let n=Number(e)/Number(t);return Number.isFinite(n)?`${(100*n).toFixed(1)} % used`:""}var Zd={legacy:e=>[
e.payload],imagerep:e=>[e.path,`lsu ${e.lsu}`,`size ${e.size}`],lsustatus:e=>[e.server,`state ${e.state}`],serverstatus:e=>[
e.server,`state ${e.state}`],capacity:e=>[e.server,Jd(e.used,e.capacity),`used ${G(e.used??"")}`],abilities:e=>[e.server,
`flags 0x${Number(e.flags).toString(16).toUpperCase()}`],activity:e=>[e.msg,`action ${e.action}`,`severity ${e.severity}`],
audit:e=>[e.AUditMSg,`action ${e.action}`],kelp:e=>[e.string,`issue ${e.issue}`,`severity ${e.severity}`]};function bi(e){
let t=Zd[e.kind];if(!t||Object.keys(e.fields).length===0)return{main:e.eventString,details:[]};let[n,...o]=t(e.fields).map(
r=>String(r??""));return{main:n??"",details:o.filter(r=>r!=="")}}function vn({name:e}){return l("span",{class:"kind","data-kind":e,children:e})}function cu(e){let t=matchMedia(e),n=J(t.matches);return t.addEventListener("change",()=>n.value=t.matches),n}var fu=cu(
"(prefers-color-scheme: dark)"),wi=cu("(max-width: 640px)");var du=8,_n=e=>`${e.dsid}/${e.id}`;function Xd({event:e,index:t,height:n,active:o,opened:r,onActive:s}){let{main:a,details:c}=bi(
e);return l("div",{role:"row",class:e.problem?"row damaged":"row","aria-rowindex":t+2,"aria-selected":r,tabIndex:o?0:-1,
"data-key":_n(e),style:{transform:`translateY(${t*n}px)`,height:`${n}px`},onFocus:s,onClick:()=>No(String(e.dsid),String(
e.id),!1),children:[l("span",{role:"gridcell",class:"id",children:e.id}),l("span",{role:"gridcell",class:"when",children:rt(
e.date,Ee.value)}),l("span",{role:"gridcell",children:l(vn,{name:e.kind})}),l("span",{role:"gridcell",class:"what",children:[
e.problem?l("strong",{class:"problem",children:[_e(e.problem)," "]}):null,_e(a),c.map(p=>l("span",{class:"detail",children:_e(
p)},p))]})]})}var ep={ArrowDown:e=>e+1,ArrowUp:e=>e-1,j:e=>e+1,k:e=>e-1,PageDown:(e,t)=>e+t,PageUp:(e,t)=>e-t,Home:()=>0,
End:(e,t,n)=>n};function tp(e,t){let n=Le(null),[o,r]=At({top:0,height:600}),s=Le(void 0),a=()=>{let p=n.current;if(!p)return;
let m=Math.floor(p.scrollTop/t),g=e[m],_=p.scrollTop-m*t;s.current=p.scrollTop>0&&g?{key:_n(g),offset:_}:void 0,r({top:p.
scrollTop,height:p.clientHeight})},c=Le(a);return c.current=a,fr(()=>{if(!n.current)return;let p=new ResizeObserver(()=>c.
current());return p.observe(n.current),()=>p.disconnect()},[]),fr(()=>{let p=s.current,m=p?e.findIndex(g=>_n(g)===p.key):
-1;p&&m>=0&&n.current&&(n.current.scrollTop=m*t+p.offset),c.current()},[e,t]),{place:n,sight:o,look:a}}function np(e,t,n,o){
let r=Math.max(0,Math.floor(e.top/t)-du),s=Math.min(n,Math.ceil((e.top+e.height)/t)+du),a=Array.from({length:Math.max(0,
s-r)},(c,p)=>r+p);return o>=s?a.push(o):o>=0&&o<r&&a.unshift(o),a}function pu(e,t){return e?.querySelector(`[data-key="${t}\
"]`)??null}function mu({rows:e,empty:t}){let n=wi.value?52:30,{place:o,sight:r,look:s}=tp(e,n),[a,c]=At(""),p=un.value?`${un.
value.dsid}/${un.value.id}`:"",m=e.findIndex(x=>_n(x)===a),g=m>=0?m:Math.min(e.length-1,Math.floor(r.top/n)),_=Le("");Pe(
()=>{let x=_.current;_.current=p,p?c(p):x&&pu(o.current,x)?.focus({preventScroll:!0})},[p]);let w=x=>{let E=e[x],M=o.current;
if(!E||!M)return;c(_n(E));let A=n;x*n<M.scrollTop&&(M.scrollTop=x*n);let y=(x+1)*n+A-M.clientHeight;y>M.scrollTop&&(M.scrollTop=
y),requestAnimationFrame(()=>{pu(M,_n(E))?.focus({preventScroll:!0})}),p&&No(String(E.dsid),String(E.id),!1)},v=x=>{if(x.
ctrlKey||x.metaKey||x.altKey)return;let E=e[g];if(x.key==="Enter"&&E){x.preventDefault(),No(String(E.dsid),String(E.id));
return}let M=ep[x.key];if(!M||e.length===0)return;x.preventDefault();let A=Math.max(1,Math.floor(r.height/n)-2);w(Math.min(
e.length-1,Math.max(0,M(g,A,e.length-1))))};return l("div",{ref:o,class:"grid",role:"grid","aria-label":"Events, newest \
first","aria-rowcount":e.length+1,style:{"--id-width":`${String(e[0]?.id??"").length}ch`},onScroll:s,onKeyDown:v,children:[
l("div",{role:"row",class:"row head","aria-rowindex":1,children:[l("span",{role:"columnheader",class:"id",children:"id"}),
l("span",{role:"columnheader",title:Dn(Ee.value),children:["time (",hi(Ee.value),")"]}),l("span",{role:"columnheader",children:"\
kind"}),l("span",{role:"columnheader",children:"event"})]}),l("div",{role:"rowgroup",class:"rows",style:{height:`${e.length*
n}px`},children:np(r,n,e.length,g).map(x=>{let E=e[x];return E?l(Xd,{event:E,index:x,height:n,active:x===g,opened:_n(E)===
p,onActive:()=>c(_n(E))},_n(E)):null})}),e.length===0?l("p",{class:"empty",children:t}):null]})}var op={mark:"M2 3.5h12M2 8h12M2 12.5h7",auto:"M8 2.5a5.5 5.5 0 1 0 0 11zM8 2.5a5.5 5.5 0 0 1 0 11",light:"M8 5.2a2.8 2.\
8 0 1 1 0 5.6 2.8 2.8 0 0 1 0-5.6M8 1v1.6M8 13.4V15M1 8h1.6M13.4 8H15M3 3l1.2 1.2M11.8 11.8 13 13M13 3l-1.2 1.2M4.2 11.8\
 3 13",dark:"M13.5 9.6A5.8 5.8 0 0 1 6.4 2.5a5.8 5.8 0 1 0 7.1 7.1z",clock:"M8 1.8a6.2 6.2 0 1 1 0 12.4A6.2 6.2 0 0 1 8 \
1.8M8 4.6V8l2.4 1.6",help:"M5.9 6.1a2.1 2.1 0 1 1 3 1.9c-.6.3-.9.7-.9 1.4M8 11.4v.6M8 1.8a6.2 6.2 0 1 1 0 12.4A6.2 6.2 0\
 0 1 8 1.8",close:"M4 4l8 8M12 4l-8 8",pause:"M5.5 3.5v9M10.5 3.5v9",play:"M5 3l8 5-8 5z"};function bn({name:e}){return l(
"svg",{class:`glyph ${e}`,viewBox:"0 0 16 16","aria-hidden":"true",children:l("path",{d:op[e]})})}var Ho=J(!1),Sr=J(!1),gu=[["1 … 6","go to a view"],["/","search in the events"],["p","pause the list of events, or go \
on"],["↑ ↓ or k j","move in the list of events"],["Page ↑ ↓, Home, End","move further"],["Enter","open the event"],
["Esc","close the event, or this help"],["c","copy the event string"],["t","theme: as the system, light, dark"],["u","ti\
mes: local or UTC"],["?","this help"]];function rp(){Qn("events"),Sr.value=!0}function ip(){document.getElementById("cop\
y-event-string")?.click()}var lp={"/":rp,"?":()=>Ho.value=!0,c:ip,p:()=>Xt.value==="events"&&mi(),t:ci,u:fi};function sp(e){
return e instanceof HTMLElement&&e.matches("input, textarea, select")}function hu(e){if(e.defaultPrevented||e.ctrlKey||e.
metaKey||e.altKey||Ae.value!=="in"||document.querySelector("dialog[open]"))return;if(e.key==="Escape"&&un.value){ri();return}
if(sp(e.target)||br.value==="off")return;let t=hr[Number(e.key)-1],n=t?()=>Qn(t):lp[e.key];n&&(e.preventDefault(),n())}function vu(){
return addEventListener("keydown",hu),()=>removeEventListener("keydown",hu)}async function ap(e,t){try{return await navigator.clipboard.writeText(e),"Copied"}catch{let n=t.closest(".card-head")?.nextElementSibling;
return n&&getSelection()?.selectAllChildren(n),"Selected: press Ctrl+C"}}function Il({text:e,name:t,id:n}){let[o,r]=At("");
return Pe(()=>{if(!o)return;let s=setTimeout(()=>r(""),2e3);return()=>clearTimeout(s)},[o]),l("button",{type:"button",id:n,
onClick:async s=>{let a=await ap(e,s.currentTarget);r(a),gn(a)},children:o||t})}function up({dsid:e,id:t}){let[n,o]=At(()=>{let r=Je.peek().find(s=>String(s.id)===t&&String(s.dsid)===e);return r?{event:r}:
{}});return Pe(()=>{n.event||$t(`/v1/queues/${e}/events/${t}`).then(r=>o({event:r}),r=>{let a=r instanceof nt&&r.status===
404?"This event is not in the queue (any more).":r.message;o({failure:a})})},[]),n}var cp=new Set(["time","date"]);function fp({
name:e,value:t}){let n=typeof t=="number"||dp(t);return cp.has(e)&&n?l(me,{children:[String(t),l("div",{class:"muted",children:[
rt(t,"utc")," UTC"]})]}):l(me,{children:n?G(t):_e(String(t))})}function dp(e){return typeof e=="string"&&/^\d{16,20}$/.test(
e)}function pp({event:e}){let t=Ht.value?.kinds[e.kind]?.fields??[],n=new Map(t.map(o=>[o.key,o.help]));return l("dl",{class:"\
fields",children:Object.entries(e.fields).map(([o,r])=>l("div",{children:[l("dt",{title:n.get(o),children:_e(o)}),l("dd",
{children:l(fp,{name:o,value:r})})]},o))})}function mp({event:e}){return l("dl",{class:"fields",children:[l("div",{children:[
l("dt",{children:"kind"}),l("dd",{children:[l(vn,{name:e.kind})," ",l("span",{class:"muted",children:["type ",e.type]})]})]}),
l("div",{children:[l("dt",{children:"queue"}),l("dd",{children:String(e.dsid)==="0"?"global queue":`data selection ${e.dsid}`})]}),
l("div",{children:[l("dt",{children:"date"}),l("dd",{children:[rt(e.date,"local")," ",l("span",{class:"muted",children:Dn(
"local")}),l("div",{class:"muted",children:[rt(e.date,"utc")," UTC"]}),l("div",{class:"muted",children:[zo(e.date)," ago"]})]})]})]})}
function hp({event:e}){return l(me,{children:[e.problem?l("p",{class:"banner bad",children:_e(e.problem)}):null,l(mp,{event:e}),
l("h3",{children:"Fields"}),Object.keys(e.fields).length>0?l(pp,{event:e}):l("p",{class:"muted",children:"Its event stri\
ng cannot be taken apart."}),l("div",{class:"card-head",children:[l("h3",{children:"Event string"}),l(Il,{id:"copy-event\
-string",text:e.eventString,name:"Copy"})]}),l("pre",{class:"raw","data-testid":"event-string",children:_e(e.eventString)}),
e.eventStringHex?l(me,{children:[l("div",{class:"card-head",children:[l("h3",{children:"Its bytes"}),l(Il,{text:e.eventStringHex,
name:"Copy"})]}),l("p",{class:"muted",children:"The event string is not UTF-8; this is what is stored."}),l("pre",{class:"\
raw",children:e.eventStringHex})]}):null]})}function gp(){let e=Le(null);return Pe(()=>{(Tl.takesFocus||wi.peek())&&e.current?.
focus({preventScroll:!0})},[]),e}function _u(e){let{event:t,failure:n}=up(e),o=gp();return l("aside",{class:"card panel",
"aria-labelledby":"panel-title",children:[l("div",{class:"card-head",children:[l("h2",{id:"panel-title",ref:o,tabIndex:-1,
children:["Event ",e.id]}),l("button",{type:"button",class:"icon","aria-label":"Close",onClick:ri,children:l(bn,{name:"c\
lose"})})]}),t?l(hp,{event:t}):null,t||n?null:l("p",{class:"muted",children:"Asking for it …"}),n?l("p",{role:"alert",
children:n}):null]})}function Vo(e){return String(e.dsid)==="0"?"global queue":e.name?`${e.dsid}: ${_e(e.name)}`:`data selection ${e.dsid}`}var vp={off:["not listening",""],connecting:["connecting",""],live:["live","ok"],broken:["interrupted, trying again","ba\
d"],resting:["resting while this page is hidden",""]};function _p(e){let t=new Set($n.value);t.delete(e)||t.add(e),$n.value=
t}function bp(){mi(),gn(Vt.value?"The list is paused.":"The list goes on.")}function wp(){let e=Ve.value?.queues??[],t=e.
some(n=>String(n.dsid)===lt.value);return l("label",{class:"field",children:[l("span",{class:"unseen",children:"Queue"}),
l("select",{value:lt.value,onChange:n=>lt.value=n.currentTarget.value,children:[t?null:l("option",{value:lt.value,children:[
"data selection ",lt.value]}),e.map(n=>l("option",{value:String(n.dsid),children:Vo(n)},n.dsid))]})]})}function yp(){return l(
"fieldset",{class:"choices kinds",children:[l("legend",{class:"unseen",children:"Kinds shown"}),l("button",{type:"button",
"aria-pressed":$n.value.size===0,onClick:()=>$n.value=new Set,children:"all kinds"}),Ln.map(e=>l("button",{type:"button",
class:"kind","data-kind":e,"aria-pressed":$n.value.has(e),onClick:()=>_p(e),children:e},e))]})}function xp(){let[e,t]=vp[mn.
value];if(!Vt.value&&mn.value==="broken"&&yr.value)return l("span",{class:"state bad",children:["interrupted: ",_e(yr.value)]});
if(!Vt.value)return l("span",{class:`state ${t}`,children:e});let n=eo.value>0?` and ${G(eo.value)} more`:"";return l("s\
pan",{class:"state warn",children:["paused, ",G(Xn.value.length),n," new"]})}function kp(){let e=Le(null);return Pe(()=>{
Sr.value&&e.current?.focus(),Sr.value=!1},[Sr.value]),l("div",{class:"tools-row",children:[l(wp,{}),l("label",{class:"fi\
eld grow",children:[l("span",{class:"unseen",children:"Search in the events"}),l("input",{ref:e,type:"search",placeholder:"\
Search id or text",value:Io.value,onInput:t=>Io.value=t.currentTarget.value,onKeyDown:t=>t.key==="Escape"&&(Io.value="")})]}),
l("button",{type:"button",class:"with-icon","aria-pressed":Vt.value,onClick:bp,children:[l(bn,{name:Vt.value?"play":"pau\
se"})," ",Vt.value?"Go on":"Pause"]})]})}var Sp={"":"Older events",asking:"Looking …",none:"None found there; look fur\
ther back",failed:"The server did not answer; try again"};function Tp(){return Xa.value?l("span",{class:"muted",children:"\
the list holds no more"}):nn.value===void 0||nn.value==="0"?l("span",{class:"muted",children:"all that are stored"}):l("\
button",{type:"button",disabled:Zn.value==="asking",onClick:ru,children:Sp[Zn.value]})}function Mp(){let e=xr.value.length===
Je.value.length?`${G(Je.value.length)} events`:`${G(xr.value.length)} of ${G(Je.value.length)} events`;return l("div",{class:"\
list-foot",children:[l("span",{"data-testid":"count",children:e}),l(Tp,{})]})}function Ep(){return Je.value.length>0?"No\
 event in the list matches.":mn.value==="live"?"No events here; new ones appear as they are stored.":""}function Cp(){let e=`${Io.
value}|${[...$n.value].join()}`;Pe(()=>{if(e==="|")return;let t=setTimeout(()=>gn(`${xr.peek().length} events match.`),800);
return()=>clearTimeout(t)},[e])}function bu(){Cp();let e=un.value;return Pe(()=>{e&&(lt.value=e.dsid)},[e?.dsid]),l("div",
{class:`events ${e?"with-panel":""}`,children:[l("section",{class:"list card","aria-labelledby":"events-title",children:[
l("div",{class:"card-head",children:[l("h2",{id:"events-title",children:"Events"}),l(xp,{})]}),l(kp,{}),l(yp,{}),l(mu,{rows:xr.
value,empty:Ep()}),l(Mp,{})]}),e?l(_u,{dsid:e.dsid,id:e.id},`${e.dsid}/${e.id}`):null]})}function Pp({scrollLeft:e,scrollWidth:t,clientWidth:n}){let o=[];return e>1&&o.push("left"),e+n<t-1&&o.push("right"),o.join(
" ")}function yi({label:e,children:t}){let n=Le(null),[o,r]=At(""),s=()=>n.current&&r(Pp(n.current));return fr(()=>{let a=n.
current;if(!a)return;let c=new ResizeObserver(s);for(let p of[a,...a.children])c.observe(p);return()=>c.disconnect()},[]),
l("div",{class:"wide-frame","data-more":o,children:l("div",{ref:n,class:"scroll",tabIndex:0,role:"region","aria-label":e,
onScroll:s,children:t})})}function Ap({limit:e}){let t=Ll.value?.count??0,n="Length of the global queue";return e===0?l(no,{name:n,text:`${G(t)}, \
no limit`}):l(to,{name:n,value:t,most:e,text:`${G(t)} of ${G(e)}`})}function $p({days:e}){let t=Ll.value?.oldest,n=t===void 0?
0:Math.max(0,Date.now()/1e3-Number(t)),o="Age of its oldest event";if(e===0)return l(no,{name:o,text:`${hn(n)}, no limit`});
let r=`${hn(n)} of ${G(e)} d`;return l(to,{name:o,value:Math.round(n),most:e*86400,text:r})}function wu({name:e,value:t,
most:n}){return n?l(to,{name:e,value:t,most:n,text:`${G(t)} of ${G(n)}`}):l(no,{name:e,text:G(t)})}function Dp({now:e}){
let t=e.bytes?.diskFree;if(t===void 0)return null;let n=Number(e.bytes?.database??0)+Number(e.bytes?.wal??0);return l(no,
{name:"Database",text:`${Dt(n)}, ${Dt(t)} free on its disk`})}function Lp({cluster:e}){let t=e.members.filter(c=>c.quotaBytes>
0),n=c=>c.databaseBytes/c.quotaBytes,[o]=t.sort((c,p)=>n(p)-n(c));if(!o)return null;let{name:r,databaseBytes:s,quotaBytes:a}=o;
return l(to,{name:`Database of ${_e(r)}`,value:s,most:a,text:`${Dt(s)} of ${Dt(a)}`})}function xi({now:e}){return l(me,{
children:[l(Ap,{limit:e.countLimit}),l($p,{days:e.ageLimitDays}),l(wu,{name:"Connections",value:e.connections,most:Ht.value?.
connections}),l(wu,{name:"Waiting readers",value:e.waiting,most:Ht.value?.waiting}),e.cluster?l(Lp,{cluster:e.cluster}):
l(Dp,{now:e})]})}function oo({name:e,value:t}){return t===void 0?null:l("div",{children:[l("dt",{children:e}),l("dd",{class:"figure",children:t})]})}
var ro=(e,t)=>e===void 0?void 0:e===0?"no limit":t(e);function Np({known:e}){return l("dl",{class:"fields figures-list",
children:[l(oo,{name:"most events in the global queue",value:ro(e.countLimit,G)}),l(oo,{name:"highest age, in days",value:ro(
e.ageLimitDays,G)}),l(oo,{name:"largest request",value:ro(e.bodyBytes,Dt)}),l(oo,{name:"most events in one request",value:ro(
e.batchEvents,G)}),l(oo,{name:"most connections",value:ro(e.connections,G)}),l(oo,{name:"most waiting readers",value:ro(
e.waiting,G)}),l(oo,{name:"requests a second",value:ro(e.requestsPerSecond,G)})]})}function Rp({field:e}){return l("tr",
{children:[l("th",{scope:"row",children:l("code",{children:e.key})}),l("td",{children:e.type}),l("td",{children:e.required?
"required":"optional"}),l("td",{class:"figure",children:e.mostBytes?`${G(e.mostBytes)} B`:"–"}),l("td",{class:"wide",
children:e.help??""})]})}function Op({name:e,summary:t,fields:n}){let o=n.length===1?"1 field":`${n.length} fields`;return l(
"details",{children:[l("summary",{children:[l(vn,{name:e})," ",l("span",{class:"muted",children:t?`${t}, ${o}`:o})]}),l(
yi,{label:`Fields of ${e}`,children:l("table",{class:"data",children:[l("thead",{children:l("tr",{children:[l("th",{scope:"\
col",children:"field"}),l("th",{scope:"col",children:"type"}),l("th",{scope:"col",children:"presence"}),l("th",{scope:"c\
ol",children:"longest"}),l("th",{scope:"col",children:"meaning"})]})}),l("tbody",{children:n.map(r=>l(Rp,{field:r},r.key))})]})})]})}
function yu(){let e=Ve.value,t=Ht.value;return l("div",{class:"columns",children:[l("section",{class:"card","aria-labell\
edby":"near-title",children:[l("h2",{id:"near-title",children:"How near they are"}),e?l(xi,{now:e}):l("p",{class:"muted",
children:"Waiting for figures …"})]}),l("section",{class:"card","aria-labelledby":"limits-title",children:[l("h2",{id:"\
limits-title",children:"Limits in force"}),t?l(Np,{known:t}):l("p",{class:"muted",children:"Waiting for the limits …"})]}),
l("section",{class:"card span","aria-labelledby":"kinds-title",children:[l("h2",{id:"kinds-title",children:"What an even\
t may hold"}),Object.entries(t?.kinds??{}).map(([n,{summary:o,fields:r}])=>l(Op,{name:n,summary:o,fields:r},n))]})]})}function xu(){let[e,t]=At(""),[n,o]=At(!1),r=Le(null);return Pe(()=>r.current?.focus(),[]),l("form",{class:"log-in card",
onSubmit:async a=>{a.preventDefault(),o(!0),await Ha(e),o(!1),r.current?.select()},children:[l("h2",{children:"Log in"}),
l("label",{for:"token",children:"Token"}),l("input",{id:"token",ref:r,type:"password",autocomplete:"off",spellcheck:!1,required:!0,
value:e,"aria-invalid":Ro.value!=="","aria-describedby":"token-refusal token-help",onInput:a=>t(a.currentTarget.value)}),
l("p",{id:"token-refusal",class:"refusal",role:"alert",children:Ro.value}),l("button",{type:"submit",class:"primary",disabled:n,
children:"Log in"}),l("p",{id:"token-help",class:"muted",children:["The server's administrator makes one with",l("br",{}),
l("code",{children:"eventctl token add NAME --role read"}),l("br",{}),"It is kept until this tab is closed."]})]})}var Fp="uplot",Ip="u-hz",zp="u-vt",Hp="u-title",Vp="u-wrap",Wp="u-under",qp="u-over",Up="u-axis",so="u-off",Bp="u-select",
Kp="u-cursor-x",jp="u-cursor-y",Gp="u-cursor-pt",Yp="u-legend",Qp="u-live",Jp="u-inline",Zp="u-series",Xp="u-marker",ku="\
u-label",em="u-value",Mr="width",Er="height";var Su="bottom",Wo="left",zl="right",ns="#000",Tu=ns+"0",Hl="mousemove",Mu="mousedown",Vl="mouseup",Eu="mouseenter",Cu="\
mouseleave",Pu="dblclick",tm="resize",nm="scroll",Au="change",Ei="dppxchange",os="--",Yo=typeof window<"u",Kl=Yo?document:
null,Uo=Yo?window:null,om=Yo?navigator:null,ue,ki;function jl(){let e=devicePixelRatio;ue!=e&&(ue=e,ki&&Yl(Au,ki,jl),ki=
matchMedia(`(min-resolution: ${ue-.001}dppx) and (max-resolution: ${ue+.001}dppx)`),ao(Au,ki,jl),Uo.dispatchEvent(new CustomEvent(
Ei)))}function yt(e,t){if(t!=null){let n=e.classList;!n.contains(t)&&n.add(t)}}function Gl(e,t){let n=e.classList;n.contains(
t)&&n.remove(t)}function xe(e,t,n){e.style[t]=n+"px"}function Wt(e,t,n,o){let r=Kl.createElement(e);return t!=null&&yt(r,
t),n?.insertBefore(r,o),r}function Lt(e,t){return Wt("div",e,t)}var $u=new WeakMap;function on(e,t,n,o,r){let s="transla\
te("+t+"px,"+n+"px)",a=$u.get(e);s!=a&&(e.style.transform=s,$u.set(e,s),t<0||n<0||t>o||n>r?yt(e,so):Gl(e,so))}var Du=new WeakMap;
function Lu(e,t,n){let o=t+n,r=Du.get(e);o!=r&&(Du.set(e,o),e.style.background=t,e.style.borderColor=n)}var Nu=new WeakMap;
function Ru(e,t,n,o){let r=t+""+n,s=Nu.get(e);r!=s&&(Nu.set(e,r),e.style.height=n+"px",e.style.width=t+"px",e.style.marginLeft=
o?-t/2+"px":0,e.style.marginTop=o?-n/2+"px":0)}var rs={passive:!0},rm={...rs,capture:!0};function ao(e,t,n,o){t.addEventListener(
e,n,o?rm:rs)}function Yl(e,t,n,o){t.removeEventListener(e,n,rs)}Yo&&jl();function qt(e,t,n,o){let r;n=n||0,o=o||t.length-
1;let s=o<=2147483647;for(;o-n>1;)r=s?n+o>>1:xt((n+o)/2),t[r]<e?n=r:o=r;return e-t[n]<=t[o]-e?n:o}function uc(e){return(n,o,r)=>{
let s=-1,a=-1;for(let c=o;c<=r;c++)if(e(n[c])){s=c;break}for(let c=r;c>=o;c--)if(e(n[c])){a=c;break}return[s,a]}}var cc=e=>e!=
null,fc=e=>e!=null&&e>0,Ai=uc(cc),im=uc(fc);function lm(e,t,n,o=0,r=!1){let s=r?im:Ai,a=r?fc:cc;[t,n]=s(e,t,n);let c=e[t],
p=e[t];if(t>-1)if(o==1)c=e[t],p=e[n];else if(o==-1)c=e[n],p=e[t];else for(let m=t;m<=n;m++){let g=e[m];a(g)&&(g<c?c=g:g>
p&&(p=g))}return[c??he,p??-he]}function $i(e,t,n,o){let r=Iu(e),s=Iu(t);e==t&&(r==-1?(e*=n,t/=n):(e/=n,t*=n));let a=n==10?
wn:dc,c=r==1?xt:Nt,p=s==1?Nt:xt,m=c(a(qe(e))),g=p(a(qe(t))),_=Bo(n,m),w=Bo(n,g);return n==10&&(m<0&&(_=ge(_,-m)),g<0&&(w=
ge(w,-g))),o||n==2?(e=_*r,t=w*s):(e=gc(e,_),t=Di(t,w)),[e,t]}function is(e,t,n,o){let r=$i(e,t,n,o);return e==0&&(r[0]=0),
t==0&&(r[1]=0),r}var ls=.1,Ou={mode:3,pad:ls},Pr={pad:0,soft:null,mode:0},sm={min:Pr,max:Pr};function Ci(e,t,n,o){return Li(
n)?Fu(e,t,n):(Pr.pad=n,Pr.soft=o?0:null,Pr.mode=o?3:0,Fu(e,t,sm))}function se(e,t){return e??t}function am(e,t,n){for(t=
se(t,0),n=se(n,e.length-1);t<=n;){if(e[t]!=null)return!0;t++}return!1}function Fu(e,t,n){let o=n.min,r=n.max,s=se(o.pad,
0),a=se(r.pad,0),c=se(o.hard,-he),p=se(r.hard,he),m=se(o.soft,he),g=se(r.soft,-he),_=se(o.mode,0),w=se(r.mode,0),v=t-e,x=wn(
v),E=dt(qe(e),qe(t)),M=wn(E),A=qe(M-x);(v<1e-24||A>10)&&(v=0,(e==0||t==0)&&(v=1e-24,_==2&&m!=he&&(s=0),w==2&&g!=-he&&(a=
0)));let y=v||E||1e3,$=wn(y),S=Bo(10,xt($)),Y=y*(v==0?e==0?.1:1:s),O=ge(gc(e-Y,S/10),24),Q=e>=m&&(_==1||_==3&&O<=m||_==2&&
O>=m)?m:he,q=dt(c,O<Q&&e>=Q?Q:Ut(Q,O)),X=y*(v==0?t==0?.1:1:a),W=ge(Di(t+X,S/10),24),P=t<=g&&(w==1||w==3&&W>=g||w==2&&W<=
g)?g:-he,U=Ut(p,W>P&&t<=P?P:dt(P,W));return q==U&&q==0&&(U=100),[q,U]}var um=new Intl.NumberFormat(Yo?om.language:"en-US"),
ss=e=>um.format(e),kt=Math,Mi=kt.PI,qe=kt.abs,xt=kt.floor,We=kt.round,Nt=kt.ceil,Ut=kt.min,dt=kt.max,Bo=kt.pow,Iu=kt.sign,
wn=kt.log10,dc=kt.log2,cm=(e,t=1)=>kt.sinh(e)*t,Wl=(e,t=1)=>kt.asinh(e/t),he=1/0;function zu(e){return(wn((e^e>>31)-(e>>
31))|0)+1}function Ql(e,t,n){return Ut(dt(e,t),n)}function pc(e){return typeof e=="function"}function ne(e){return pc(e)?
e:()=>e}var fm=()=>{},mc=e=>e,hc=(e,t)=>t,dm=e=>null,Hu=e=>!0,Vu=(e,t)=>e==t,pm=/\.\d*?(?=9{6,}|0{6,})/gm,uo=e=>{if(_c(e)||
Rn.has(e))return e;let t=`${e}`,n=t.match(pm);if(n==null)return e;let o=n[0].length-1;if(t.indexOf("e-")!=-1){let[r,s]=t.
split("e");return+`${uo(r)}e${s}`}return ge(e,o)};function io(e,t){return uo(ge(uo(e/t))*t)}function Di(e,t){return uo(Nt(
uo(e/t))*t)}function gc(e,t){return uo(xt(uo(e/t))*t)}function ge(e,t=0){if(_c(e))return e;let n=10**t,o=e*n*(1+Number.EPSILON);
return We(o)/n}var Rn=new Map;function vc(e){return((""+e).split(".")[1]||"").length}function $r(e,t,n,o){let r=[],s=o.map(
vc);for(let a=t;a<n;a++){let c=qe(a),p=ge(Bo(e,a),c);for(let m=0;m<o.length;m++){let g=e==10?+`${o[m]}e${a}`:o[m]*p,_=(a>=
0?0:c)+(a>=s[m]?0:s[m]),w=e==10?g:ge(g,_);r.push(w),Rn.set(w,_)}}return r}var Ar={},as=[],Ko=[null,null],Nn=Array.isArray,
_c=Number.isInteger,mm=e=>e===void 0;function Wu(e){return typeof e=="string"}function Li(e){let t=!1;if(e!=null){let n=e.
constructor;t=n==null||n==Object}return t}function hm(e){return e!=null&&typeof e=="object"}var gm=Object.getPrototypeOf(
Uint8Array),bc="__proto__";function jo(e,t=Li){let n;if(Nn(e)){let o=e.find(r=>r!=null);if(Nn(o)||t(o)){n=Array(e.length);
for(let r=0;r<e.length;r++)n[r]=jo(e[r],t)}else n=e.slice()}else if(e instanceof gm)n=e.slice();else if(t(e)){n={};for(let o in e)
o!=bc&&(n[o]=jo(e[o],t))}else n=e;return n}function Fe(e){let t=arguments;for(let n=1;n<t.length;n++){let o=t[n];for(let r in o)
r!=bc&&(Li(e[r])?Fe(e[r],jo(o[r])):e[r]=jo(o[r]))}return e}var vm=0,_m=1,bm=2;function wm(e,t,n){for(let o=0,r,s=-1;o<t.
length;o++){let a=t[o];if(a>s){for(r=a-1;r>=0&&e[r]==null;)e[r--]=null;for(r=a+1;r<n&&e[r]==null;)e[s=r++]=null}}}function ym(e,t){
if(Sm(e)){let a=e[0].slice();for(let c=1;c<e.length;c++)a.push(...e[c].slice(1));return Tm(a[0])||(a=km(a)),a}let n=new Set;
for(let a=0;a<e.length;a++){let p=e[a][0],m=p.length;for(let g=0;g<m;g++)n.add(p[g])}let o=[Array.from(n).sort((a,c)=>a-
c)],r=o[0].length,s=new Map;for(let a=0;a<r;a++)s.set(o[0][a],a);for(let a=0;a<e.length;a++){let c=e[a],p=c[0];for(let m=1;m<
c.length;m++){let g=c[m],_=Array(r).fill(void 0),w=t?t[a][m]:_m,v=[];for(let x=0;x<g.length;x++){let E=g[x],M=s.get(p[x]);
E===null?w!=vm&&(_[M]=E,w==bm&&v.push(M)):_[M]=E}wm(_,v,r),o.push(_)}}return o}var xm=typeof queueMicrotask>"u"?e=>Promise.
resolve().then(e):queueMicrotask;function km(e){let t=e[0],n=t.length,o=Array(n);for(let s=0;s<o.length;s++)o[s]=s;o.sort(
(s,a)=>t[s]-t[a]);let r=[];for(let s=0;s<e.length;s++){let a=e[s],c=Array(n);for(let p=0;p<n;p++)c[p]=a[o[p]];r.push(c)}
return r}function Sm(e){let t=e[0][0],n=t.length;for(let o=1;o<e.length;o++){let r=e[o][0];if(r.length!=n)return!1;if(r!=
t){for(let s=0;s<n;s++)if(r[s]!=t[s])return!1}}return!0}function Tm(e,t=100){let n=e.length;if(n<=1)return!0;let o=0,r=n-
1;for(;o<=r&&e[o]==null;)o++;for(;r>=o&&e[r]==null;)r--;if(r<=o)return!0;let s=dt(1,xt((r-o+1)/t));for(let a=e[o],c=o+s;c<=
r;c+=s){let p=e[c];if(p!=null){if(p<=a)return!1;a=p}}return!0}var wc=["January","February","March","April","May","June",
"July","August","September","October","November","December"],yc=["Sunday","Monday","Tuesday","Wednesday","Thursday","Fri\
day","Saturday"];function xc(e){return e.slice(0,3)}var Mm=yc.map(xc),Em=wc.map(xc),Cm={MMMM:wc,MMM:Em,WWWW:yc,WWW:Mm};function Tr(e){
return(e<10?"0":"")+e}function Pm(e){return(e<10?"00":e<100?"0":"")+e}var Am={YYYY:e=>e.getFullYear(),YY:e=>(e.getFullYear()+
"").slice(2),MMMM:(e,t)=>t.MMMM[e.getMonth()],MMM:(e,t)=>t.MMM[e.getMonth()],MM:e=>Tr(e.getMonth()+1),M:e=>e.getMonth()+
1,DD:e=>Tr(e.getDate()),D:e=>e.getDate(),WWWW:(e,t)=>t.WWWW[e.getDay()],WWW:(e,t)=>t.WWW[e.getDay()],HH:e=>Tr(e.getHours()),
H:e=>e.getHours(),h:e=>{let t=e.getHours();return t==0?12:t>12?t-12:t},AA:e=>e.getHours()>=12?"PM":"AM",aa:e=>e.getHours()>=
12?"pm":"am",a:e=>e.getHours()>=12?"p":"a",mm:e=>Tr(e.getMinutes()),m:e=>e.getMinutes(),ss:e=>Tr(e.getSeconds()),s:e=>e.
getSeconds(),fff:e=>Pm(e.getMilliseconds())};function us(e,t){t=t||Cm;let n=[],o=/\{([a-z]+)\}|[^{]+/gi,r;for(;r=o.exec(
e);)n.push(r[0][0]=="{"?Am[r[1]]:r[0]);return s=>{let a="";for(let c=0;c<n.length;c++)a+=typeof n[c]=="string"?n[c]:n[c](
s,t);return a}}var $m=new Intl.DateTimeFormat().resolvedOptions().timeZone;function Dm(e,t){let n;return t=="UTC"||t=="E\
tc/UTC"?n=new Date(+e+e.getTimezoneOffset()*6e4):t==$m?n=e:(n=new Date(e.toLocaleString("en-US",{timeZone:t})),n.setMilliseconds(
e.getMilliseconds())),n}var kc=e=>e%1==0,Pi=[1,2,2.5,5],Lm=$r(10,-32,0,Pi),Sc=$r(10,0,32,Pi),Nm=Sc.filter(kc),lo=Lm.concat(
Sc),cs=`
`,Tc="{YYYY}",qu=cs+Tc,Mc="{M}/{D}",Cr=cs+Mc,Si=Cr+"/{YY}",Ec="{aa}",Rm="{h}:{mm}",qo=Rm+Ec,Uu=cs+qo,Bu=":{ss}",fe=null;
function Cc(e){let t=e*1e3,n=t*60,o=n*60,r=o*24,s=r*30,a=r*365,p=(e==1?$r(10,0,3,Pi).filter(kc):$r(10,-3,0,Pi)).concat([
t,t*5,t*10,t*15,t*30,n,n*5,n*10,n*15,n*30,o,o*2,o*3,o*4,o*6,o*8,o*12,r,r*2,r*3,r*4,r*5,r*6,r*7,r*8,r*9,r*10,r*15,s,s*2,s*
3,s*4,s*6,a,a*2,a*5,a*10,a*25,a*50,a*100]),m=[[a,Tc,fe,fe,fe,fe,fe,fe,1],[r*28,"{MMM}",qu,fe,fe,fe,fe,fe,1],[r,Mc,qu,fe,
fe,fe,fe,fe,1],[o,"{h}"+Ec,Si,fe,Cr,fe,fe,fe,1],[n,qo,Si,fe,Cr,fe,fe,fe,1],[t,Bu,Si+" "+qo,fe,Cr+" "+qo,fe,Uu,fe,1],[e,Bu+
".{fff}",Si+" "+qo,fe,Cr+" "+qo,fe,Uu,fe,1]];function g(_){return(w,v,x,E,M,A)=>{let y=[],$=M>=a,S=M>=s&&M<a,Y=_(x),O=ge(
Y*e,3),Q=ql(Y.getFullYear(),$?0:Y.getMonth(),S||$?1:Y.getDate()),q=ge(Q*e,3);if(S||$){let X=S?M/s:0,W=$?M/a:0,P=O==q?O:ge(
ql(Q.getFullYear()+W,Q.getMonth()+X,1)*e,3),U=new Date(We(P/e)),L=U.getFullYear(),K=U.getMonth();for(let V=0;P<=E;V++){let oe=ql(
L+W*V,K+X*V,1),H=oe-_(ge(oe*e,3));P=ge((+oe+H)*e,3),P<=E&&y.push(P)}}else{let X=M>=r?r:M,W=xt(x)-xt(O),P=q+W+Di(O-q,X);y.
push(P);let U=_(P),L=U.getHours()+U.getMinutes()/n+U.getSeconds()/o,K=M/o,V=w.axes[v]._space,oe=A/V;for(;P=ge(P+M,e==1?0:
3),!(P>E);)if(K>1){let H=xt(ge(L+K,6))%24,ie=_(P).getHours()-H;ie>1&&(ie=-1),P-=ie*o,L=(L+K)%24;let de=y[y.length-1];ge(
(P-de)/M,3)*oe>=.7&&y.push(P)}else y.push(P)}return y}}return[p,m,g]}var[Om,Fm,Im]=Cc(1),[zm,Hm,Vm]=Cc(.001);$r(2,-53,53,
[1]);function Ku(e,t){return e.map(n=>n.map((o,r)=>r==0||r==8||o==null?o:t(r==1||n[8]==0?o:n[1]+o)))}function ju(e,t){return(n,o,r,s,a)=>{
let c=t.find(x=>a>=x[0])||t[t.length-1],p,m,g,_,w,v;return o.map(x=>{let E=e(x),M=E.getFullYear(),A=E.getMonth(),y=E.getDate(),
$=E.getHours(),S=E.getMinutes(),Y=E.getSeconds(),O=M!=p&&c[2]||A!=m&&c[3]||y!=g&&c[4]||$!=_&&c[5]||S!=w&&c[6]||Y!=v&&c[7]||
c[1];return p=M,m=A,g=y,_=$,w=S,v=Y,O(E)})}}function Wm(e,t){let n=us(t);return(o,r,s,a,c)=>r.map(p=>n(e(p)))}function ql(e,t,n){
return new Date(e,t,n)}function Gu(e,t){return t(e)}var qm="{YYYY}-{MM}-{DD} {h}:{mm}{aa}";function Yu(e,t){return(n,o,r,s)=>s==
null?os:t(e(o))}function Um(e,t){let n=e.series[t];return n.width?n.stroke(e,t):n.points.width?n.points.stroke(e,t):null}
function Bm(e,t){return e.series[t].fill(e,t)}var Km={show:!0,live:!0,isolate:!1,mount:fm,markers:{show:!0,width:2,stroke:Um,
fill:Bm,dash:"solid"},idx:null,idxs:null,values:[]};function jm(e,t){let n=e.cursor.points,o=Lt(),r=n.size(e,t);xe(o,Mr,
r),xe(o,Er,r);let s=r/-2;xe(o,"marginLeft",s),xe(o,"marginTop",s);let a=n.width(e,t,r);return a&&xe(o,"borderWidth",a),o}
function Gm(e,t){let n=e.series[t].points;return n._fill||n._stroke}function Ym(e,t){let n=e.series[t].points;return n._stroke||
n._fill}function Qm(e,t){return e.series[t].points.size}var Ul=[0,0];function Jm(e,t,n){return Ul[0]=t,Ul[1]=n,Ul}function Ti(e,t,n,o=!0){
return r=>{r.button==0&&(!o||r.target==t)&&n(r)}}function Bl(e,t,n,o=!0){return r=>{(!o||r.target==t)&&n(r)}}var Zm={show:!0,
x:!0,y:!0,lock:!1,move:Jm,points:{one:!1,show:jm,size:Qm,width:0,stroke:Ym,fill:Gm},bind:{mousedown:Ti,mouseup:Ti,click:Ti,
dblclick:Ti,mousemove:Bl,mouseleave:Bl,mouseenter:Bl},drag:{setScale:!0,x:!0,y:!1,dist:0,uni:null,click:(e,t)=>{t.stopPropagation(),
t.stopImmediatePropagation()},_x:!1,_y:!1},focus:{dist:(e,t,n,o,r)=>o-r,prox:-1,bias:0},hover:{skip:[void 0],prox:null,bias:0},
left:-10,top:-10,idx:null,dataIdx:null,idxs:null,event:null},Pc={show:!0,stroke:"rgba(0,0,0,0.07)",width:2},fs=Fe({},Pc,
{filter:hc}),Ac=Fe({},fs,{size:10}),$c=Fe({},Pc,{show:!1}),ds='12px system-ui, -apple-system, "Segoe UI", Roboto, "Helve\
tica Neue", Arial, "Noto Sans", sans-serif, "Apple Color Emoji", "Segoe UI Emoji", "Segoe UI Symbol", "Noto Color Emoji"',
Dc="bold "+ds,Lc=1.5,Qu={show:!0,scale:"x",stroke:ns,space:50,gap:5,alignTo:1,size:50,labelGap:0,labelSize:30,labelFont:Dc,
side:2,grid:fs,ticks:Ac,border:$c,font:ds,lineGap:Lc,rotate:0},Xm="Value",eh="Time",Ju={show:!0,scale:"x",auto:!1,sorted:1,
min:he,max:-he,idxs:[]};function th(e,t,n,o,r){return t.map(s=>s==null?"":ss(s))}function nh(e,t,n,o,r,s,a){let c=[],p=Rn.
get(r)||0;n=a?n:ge(Di(n,r),p);for(let m=n;m<=o;m=ge(m+r,p))c.push(Object.is(m,-0)?0:m);return c}function Jl(e,t,n,o,r,s,a){
let c=[],p=e.scales[e.axes[t].scale].log,m=p==10?wn:dc,g=xt(m(n));r=Bo(p,g),p==10&&(r=lo[qt(r,lo)]);let _=n,w=r*p;p==10&&
(w=lo[qt(w,lo)]);do c.push(_),_=_+r,p==10&&!Rn.has(_)&&(_=ge(_,Rn.get(r))),_>=w&&(r=_,w=r*p,p==10&&(w=lo[qt(w,lo)]));while(_<=
o);return c}function oh(e,t,n,o,r,s,a){let p=e.scales[e.axes[t].scale].asinh,m=o>p?Jl(e,t,dt(p,n),o,r):[p],g=o>=0&&n<=0?
[0]:[];return(n<-p?Jl(e,t,dt(p,-o),-n,r):[p]).reverse().map(w=>-w).concat(g,m)}var Nc=/./,rh=/[12357]/,ih=/[125]/,Zu=/1/,
Zl=(e,t,n,o)=>e.map((r,s)=>t==4&&r==0||s%o==0&&n.test(r.toExponential()[r<0?1:0])?r:null);function lh(e,t,n,o,r){let s=e.
axes[n],a=s.scale,c=e.scales[a],p=e.valToPos,m=s._space,g=p(10,a),_=p(9,a)-g>=m?Nc:p(7,a)-g>=m?rh:p(5,a)-g>=m?ih:Zu;if(_==
Zu){let w=qe(p(1,a)-g);if(w<m)return Zl(t.slice().reverse(),c.distr,_,Nt(m/w)).reverse()}return Zl(t,c.distr,_,1)}function sh(e,t,n,o,r){
let s=e.axes[n],a=s.scale,c=s._space,p=e.valToPos,m=qe(p(1,a)-p(2,a));return m<c?Zl(t.slice().reverse(),3,Nc,Nt(c/m)).reverse():
t}function ah(e,t,n,o){return o==null?os:t==null?"":ss(t)}var Xu={show:!0,scale:"y",stroke:ns,space:30,gap:5,alignTo:1,size:50,
labelGap:0,labelSize:30,labelFont:Dc,side:3,grid:fs,ticks:Ac,border:$c,font:ds,lineGap:Lc,rotate:0};function uh(e,t){let n=3+
(e||1)*2;return ge(n*t,3)}function ch(e,t){let{scale:n,idxs:o}=e.series[0],r=e._data[0],s=e.valToPos(r[o[0]],n,!0),a=e.valToPos(
r[o[1]],n,!0),c=qe(a-s),p=e.series[t],m=c/(p.points.space*ue);return o[1]-o[0]<=m}var ec={scale:null,auto:!0,sorted:0,min:he,
max:-he},Rc=(e,t,n,o,r)=>r,tc={show:!0,auto:!0,sorted:0,gaps:Rc,alpha:1,facets:[Fe({},ec,{scale:"x"}),Fe({},ec,{scale:"y"})]},
nc={scale:"y",auto:!0,sorted:0,show:!0,spanGaps:!1,gaps:Rc,alpha:1,points:{show:ch,filter:null},values:null,min:he,max:-he,
idxs:[],path:null,clip:null};function fh(e,t,n,o,r){return n/10}var Oc={time:!0,auto:!0,distr:1,log:10,asinh:1,min:null,
max:null,dir:1,ori:0},dh=Fe({},Oc,{time:!1,ori:1}),oc={};function Fc(e,t){let n=oc[e];return n||(n={key:e,plots:[],sub(o){
n.plots.push(o)},unsub(o){n.plots=n.plots.filter(r=>r!=o)},pub(o,r,s,a,c,p,m){for(let g=0;g<n.plots.length;g++)n.plots[g]!=
r&&n.plots[g].pub(o,r,s,a,c,p,m)}},e!=null&&(oc[e]=n)),n}var Go=1,Xl=2;function co(e,t,n){let o=e.mode,r=e.series[t],s=o==
2?e._data[t]:e._data,a=e.scales,c=e.bbox,p=s[0],m=o==2?s[1]:s[t],g=o==2?a[r.facets[0].scale]:a[e.series[0].scale],_=o==2?
a[r.facets[1].scale]:a[r.scale],w=c.left,v=c.top,x=c.width,E=c.height,M=e.valToPosH,A=e.valToPosV;return g.ori==0?n(r,p,
m,g,_,M,A,w,v,x,E,Ri,Qo,Fi,zc,Vc):n(r,p,m,g,_,A,M,v,w,E,x,Oi,Jo,hs,Hc,Wc)}function ps(e,t){let n=0,o=0,r=se(e.bands,as);
for(let s=0;s<r.length;s++){let a=r[s];a.series[0]==t?n=a.dir:a.series[1]==t&&(a.dir==1?o|=1:o|=2)}return[n,o==1?-1:o==2?
1:o==3?2:0]}function ph(e,t,n,o,r){let s=e.mode,a=e.series[t],c=s==2?a.facets[1].scale:a.scale,p=e.scales[c];return r==-1?
p.min:r==1?p.max:p.distr==3?p.dir==1?p.min:p.max:0}function yn(e,t,n,o,r,s){return co(e,t,(a,c,p,m,g,_,w,v,x,E,M)=>{let A=a.
pxRound,y=m.dir*(m.ori==0?1:-1),$=m.ori==0?Qo:Jo,S,Y;y==1?(S=n,Y=o):(S=o,Y=n);let O=A(_(c[S],m,E,v)),Q=A(w(p[S],g,M,x)),
q=A(_(c[Y],m,E,v)),X=A(w(s==1?g.max:g.min,g,M,x)),W=new Path2D(r);return $(W,q,X),$(W,O,X),$(W,O,Q),W})}function Ni(e,t,n,o,r,s){
let a=null;if(e.length>0){a=new Path2D;let c=t==0?Fi:hs,p=n;for(let _=0;_<e.length;_++){let w=e[_];if(w[1]>w[0]){let v=w[0]-
p;v>0&&c(a,p,o,v,o+s),p=w[1]}}let m=n+r-p,g=10;m>0&&c(a,p,o-g/2,m,o+s+g)}return a}function mh(e,t,n){let o=e[e.length-1];
o&&o[0]==t?o[1]=n:e.push([t,n])}function ms(e,t,n,o,r,s,a){let c=[],p=e.length;for(let m=r==1?n:o;m>=n&&m<=o;m+=r)if(t[m]===
null){let _=m,w=m;if(r==1)for(;++m<=o&&t[m]===null;)w=m;else for(;--m>=n&&t[m]===null;)w=m;let v=s(e[_]),x=w==_?v:s(e[w]),
E=_-r;v=a<=0&&E>=0&&E<p?s(e[E]):v;let A=w+r;x=a>=0&&A>=0&&A<p?s(e[A]):x,x>=v&&c.push([v,x])}return c}function rc(e){return e==
0?mc:e==1?We:t=>io(t,e)}function Ic(e){let t=e==0?Ri:Oi,n=e==0?(r,s,a,c,p,m)=>{r.arcTo(s,a,c,p,m)}:(r,s,a,c,p,m)=>{r.arcTo(
a,s,p,c,m)},o=e==0?(r,s,a,c,p)=>{r.rect(s,a,c,p)}:(r,s,a,c,p)=>{r.rect(a,s,p,c)};return(r,s,a,c,p,m=0,g=0)=>{m==0&&g==0?
o(r,s,a,c,p):(m=Ut(m,c/2,p/2),g=Ut(g,c/2,p/2),t(r,s+m,a),n(r,s+c,a,s+c,a+p,m),n(r,s+c,a+p,s,a+p,g),n(r,s,a+p,s,a,g),n(r,
s,a,s+c,a,m),r.closePath())}}var Ri=(e,t,n)=>{e.moveTo(t,n)},Oi=(e,t,n)=>{e.moveTo(n,t)},Qo=(e,t,n)=>{e.lineTo(t,n)},Jo=(e,t,n)=>{
e.lineTo(n,t)},Fi=Ic(0),hs=Ic(1),zc=(e,t,n,o,r,s)=>{e.arc(t,n,o,r,s)},Hc=(e,t,n,o,r,s)=>{e.arc(n,t,o,r,s)},Vc=(e,t,n,o,r,s,a)=>{
e.bezierCurveTo(t,n,o,r,s,a)},Wc=(e,t,n,o,r,s,a)=>{e.bezierCurveTo(n,t,r,o,a,s)};function qc(e){return(t,n,o,r,s)=>co(t,
n,(a,c,p,m,g,_,w,v,x,E,M)=>{let{pxRound:A,points:y}=a,$,S;m.ori==0?($=Ri,S=zc):($=Oi,S=Hc);let Y=ge(y.width*ue,3),O=(y.size-
y.width)/2*ue,Q=ge(O*2,3),q=new Path2D,X=new Path2D,{left:W,top:P,width:U,height:L}=t.bbox;Fi(X,W-Q,P-Q,U+Q*2,L+Q*2);let K=V=>{
if(p[V]!=null){let oe=A(_(c[V],m,E,v)),H=A(w(p[V],g,M,x));$(q,oe+O,H),S(q,oe,H,O,0,Mi*2)}};if(s)s.forEach(K);else for(let V=o;V<=
r;V++)K(V);return{stroke:Y>0?q:null,fill:q,clip:X,flags:Go|Xl}})}function Uc(e){return(t,n,o,r,s,a)=>{o!=r&&(s!=o&&a!=o&&
e(t,n,o),s!=r&&a!=r&&e(t,n,r),e(t,n,a))}}var hh=Uc(Qo),gh=Uc(Jo);function Bc(e){let t=se(e?.alignGaps,0);return(n,o,r,s)=>co(
n,o,(a,c,p,m,g,_,w,v,x,E,M)=>{[r,s]=Ai(p,r,s);let A=a.pxRound,y=L=>A(_(L,m,E,v)),$=L=>A(w(L,g,M,x)),S,Y;m.ori==0?(S=Qo,Y=
hh):(S=Jo,Y=gh);let O=m.dir*(m.ori==0?1:-1),Q={stroke:new Path2D,fill:null,clip:null,band:null,gaps:null,flags:Go},q=Q.stroke,
X=!1;if(s-r>=E*4){let L=I=>n.posToVal(I,m.key,!0),K=null,V=null,oe,H,pt,ke=y(c[O==1?r:s]),ie=y(c[r]),de=y(c[s]),ee=L(O==
1?ie+1:de-1);for(let I=O==1?r:s;I>=r&&I<=s;I+=O){let Ie=c[I],Se=(O==1?Ie<ee:Ie>ee)?ke:y(Ie),ce=p[I];Se==ke?ce!=null?(H=ce,
K==null?(S(q,Se,$(H)),oe=K=V=H):H<K?K=H:H>V&&(V=H)):ce===null&&(X=!0):(K!=null&&Y(q,ke,$(K),$(V),$(oe),$(H)),ce!=null?(H=
ce,S(q,Se,$(H)),K=V=oe=H):(K=V=null,ce===null&&(X=!0)),ke=Se,ee=L(ke+O))}K!=null&&K!=V&&pt!=ke&&Y(q,ke,$(K),$(V),$(oe),$(
H))}else for(let L=O==1?r:s;L>=r&&L<=s;L+=O){let K=p[L];K===null?X=!0:K!=null&&S(q,y(c[L]),$(K))}let[P,U]=ps(n,o);if(a.fill!=
null||P!=0){let L=Q.fill=new Path2D(q),K=a.fillTo(n,o,a.min,a.max,P),V=$(K),oe=y(c[r]),H=y(c[s]);O==-1&&([H,oe]=[oe,H]),
S(L,H,V),S(L,oe,V)}if(!a.spanGaps){let L=[];X&&L.push(...ms(c,p,r,s,O,y,t)),Q.gaps=L=a.gaps(n,o,r,s,L),Q.clip=Ni(L,m.ori,
v,x,E,M)}return U!=0&&(Q.band=U==2?[yn(n,o,r,s,q,-1),yn(n,o,r,s,q,1)]:yn(n,o,r,s,q,U)),Q})}function vh(e){let t=se(e.align,
1),n=se(e.ascDesc,!1),o=se(e.alignGaps,0),r=se(e.extend,!1);return(s,a,c,p)=>co(s,a,(m,g,_,w,v,x,E,M,A,y,$)=>{[c,p]=Ai(_,
c,p);let S=m.pxRound,{left:Y,width:O}=s.bbox,Q=ie=>S(x(ie,w,y,M)),q=ie=>S(E(ie,v,$,A)),X=w.ori==0?Qo:Jo,W={stroke:new Path2D,
fill:null,clip:null,band:null,gaps:null,flags:Go},P=W.stroke,U=w.dir*(w.ori==0?1:-1),L=q(_[U==1?c:p]),K=Q(g[U==1?c:p]),V=K,
oe=K;r&&t==-1&&(oe=Y,X(P,oe,L)),X(P,K,L);for(let ie=U==1?c:p;ie>=c&&ie<=p;ie+=U){let de=_[ie];if(de==null)continue;let ee=Q(
g[ie]),I=q(de);t==1?X(P,ee,L):X(P,V,I),X(P,ee,I),L=I,V=ee}let H=V;r&&t==1&&(H=Y+O,X(P,H,L));let[pt,ke]=ps(s,a);if(m.fill!=
null||pt!=0){let ie=W.fill=new Path2D(P),de=m.fillTo(s,a,m.min,m.max,pt),ee=q(de);X(ie,H,ee),X(ie,oe,ee)}if(!m.spanGaps){
let ie=[];ie.push(...ms(g,_,c,p,U,Q,o));let de=m.width*ue/2,ee=n||t==1?de:-de,I=n||t==-1?-de:de;ie.forEach(Ie=>{Ie[0]+=ee,
Ie[1]+=I}),W.gaps=ie=m.gaps(s,a,c,p,ie),W.clip=Ni(ie,w.ori,M,A,y,$)}return ke!=0&&(W.band=ke==2?[yn(s,a,c,p,P,-1),yn(s,a,
c,p,P,1)]:yn(s,a,c,p,P,ke)),W})}function ic(e,t,n,o,r,s,a=he){if(e.length>1){let c=null;for(let p=0,m=1/0;p<e.length;p++)
if(t[p]!==void 0){if(c!=null){let g=qe(e[p]-e[c]);g<m&&(m=g,a=qe(n(e[p],o,r,s)-n(e[c],o,r,s)))}c=p}}return a}function _h(e){
e=e||Ar;let t=se(e.size,[.6,he,1]),n=e.align||0,o=e.gap||0,r=e.radius;r=r==null?[0,0]:typeof r=="number"?[r,0]:r;let s=ne(
r),a=1-t[0],c=se(t[1],he),p=se(t[2],1),m=se(e.disp,Ar),g=se(e.each,v=>{}),{fill:_,stroke:w}=m;return(v,x,E,M)=>co(v,x,(A,y,$,S,Y,O,Q,q,X,W,P)=>{
let U=A.pxRound,L=n,K=o*ue,V=c*ue,oe=p*ue,H,pt;S.ori==0?[H,pt]=s(v,x):[pt,H]=s(v,x);let ke=S.dir*(S.ori==0?1:-1),ie=S.ori==
0?Fi:hs,de=S.ori==0?g:(R,ve,ze,ho,In,Kt,zn)=>{g(R,ve,ze,In,ho,zn,Kt)},ee=se(v.bands,as).find(R=>R.series[0]==x),I=ee!=null?
ee.dir:0,Ie=A.fillTo(v,x,A.min,A.max,I),st=U(Q(Ie,Y,P,X)),Se,ce,Rt,gt=W,Ce=U(A.width*ue),Bt=!1,rn=null,St=null,xn=null,fo=null;
_!=null&&(Ce==0||w!=null)&&(Bt=!0,rn=_.values(v,x,E,M),St=new Map,new Set(rn).forEach(R=>{R!=null&&St.set(R,new Path2D)}),
Ce>0&&(xn=w.values(v,x,E,M),fo=new Map,new Set(xn).forEach(R=>{R!=null&&fo.set(R,new Path2D)})));let{x0:po,size:Xo}=m;if(po!=
null&&Xo!=null){L=1,y=po.values(v,x,E,M),po.unit==2&&(y=y.map(ze=>v.posToVal(q+ze*W,S.key,!0)));let R=Xo.values(v,x,E,M);
Xo.unit==2?ce=R[0]*W:ce=O(R[0],S,W,q)-O(0,S,W,q),gt=ic(y,$,O,S,W,q,gt),Rt=gt-ce+K}else gt=ic(y,$,O,S,W,q,gt),Rt=gt*a+K,ce=
gt-Rt;Rt<1&&(Rt=0),Ce>=ce/2&&(Ce=0),Rt<5&&(U=mc);let Dr=Rt>0,On=gt-Rt-(Dr?Ce:0);ce=U(Ql(On,oe,V)),Se=(L==0?ce/2:L==ke?0:
ce)-L*ke*((L==0?K/2:0)+(Dr?Ce/2:0));let at={stroke:null,fill:null,clip:null,band:null,gaps:null,flags:0},mo=Bt?null:new Path2D,
ln=null;if(ee!=null)ln=v.data[ee.series[1]];else{let{y0:R,y1:ve}=m;R!=null&&ve!=null&&($=ve.values(v,x,E,M),ln=R.values(
v,x,E,M))}let Fn=H*ce,Z=pt*ce;for(let R=ke==1?E:M;R>=E&&R<=M;R+=ke){let ve=$[R];if(ve==null)continue;if(ln!=null){let mt=ln[R]??
0;if(ve-mt==0)continue;st=Q(mt,Y,P,X)}let ze=S.distr!=2||m!=null?y[R]:R,ho=O(ze,S,W,q),In=Q(se(ve,Ie),Y,P,X),Kt=U(ho-Se),
zn=U(dt(In,st)),vt=U(Ut(In,st)),Tt=zn-vt;if(ve!=null){let mt=ve<0?Z:Fn,Ot=ve<0?Fn:Z;Bt?(Ce>0&&xn[R]!=null&&ie(fo.get(xn[R]),
Kt,vt+xt(Ce/2),ce,dt(0,Tt-Ce),mt,Ot),rn[R]!=null&&ie(St.get(rn[R]),Kt,vt+xt(Ce/2),ce,dt(0,Tt-Ce),mt,Ot)):ie(mo,Kt,vt+xt(
Ce/2),ce,dt(0,Tt-Ce),mt,Ot),de(v,x,R,Kt-Ce/2,vt,ce+Ce,Tt)}}return Ce>0?at.stroke=Bt?fo:mo:Bt||(at._fill=A.width==0?A._fill:
A._stroke??A._fill,at.width=0),at.fill=Bt?St:mo,at})}function bh(e,t){let n=se(t?.alignGaps,0);return(o,r,s,a)=>co(o,r,(c,p,m,g,_,w,v,x,E,M,A)=>{
[s,a]=Ai(m,s,a);let y=c.pxRound,$=H=>y(w(H,g,M,x)),S=H=>y(v(H,_,A,E)),Y,O,Q;g.ori==0?(Y=Ri,Q=Qo,O=Vc):(Y=Oi,Q=Jo,O=Wc);let q=g.
dir*(g.ori==0?1:-1),X=$(p[q==1?s:a]),W=X,P=[],U=[];for(let H=q==1?s:a;H>=s&&H<=a;H+=q)if(m[H]!=null){let ke=p[H],ie=$(ke);
P.push(W=ie),U.push(S(m[H]))}let L={stroke:e(P,U,Y,Q,O,y),fill:null,clip:null,band:null,gaps:null,flags:Go},K=L.stroke,[
V,oe]=ps(o,r);if(c.fill!=null||V!=0){let H=L.fill=new Path2D(K),pt=c.fillTo(o,r,c.min,c.max,V),ke=S(pt);Q(H,W,ke),Q(H,X,
ke)}if(!c.spanGaps){let H=[];H.push(...ms(p,m,s,a,q,$,n)),L.gaps=H=c.gaps(o,r,s,a,H),L.clip=Ni(H,g.ori,x,E,M,A)}return oe!=
0&&(L.band=oe==2?[yn(o,r,s,a,K,-1),yn(o,r,s,a,K,1)]:yn(o,r,s,a,K,oe)),L})}function wh(e){return bh(yh,e)}function yh(e,t,n,o,r,s){
let a=e.length;if(a<2)return null;let c=new Path2D;if(n(c,e[0],t[0]),a==2)o(c,e[1],t[1]);else{let p=Array(a),m=Array(a-1),
g=Array(a-1),_=Array(a-1);for(let w=0;w<a-1;w++)g[w]=t[w+1]-t[w],_[w]=e[w+1]-e[w],m[w]=g[w]/_[w];p[0]=m[0];for(let w=1;w<
a-1;w++)m[w]===0||m[w-1]===0||m[w-1]>0!=m[w]>0?p[w]=0:(p[w]=3*(_[w-1]+_[w])/((2*_[w]+_[w-1])/m[w-1]+(_[w]+2*_[w-1])/m[w]),
isFinite(p[w])||(p[w]=0));p[a-1]=m[a-2];for(let w=0;w<a-1;w++)r(c,e[w]+_[w]/3,t[w]+p[w]*_[w]/3,e[w+1]-_[w]/3,t[w+1]-p[w+
1]*_[w]/3,e[w+1],t[w+1])}return c}var es=new Set;function lc(){for(let e of es)e.syncRect(!0)}Yo&&(ao(tm,Uo,lc),ao(nm,Uo,
lc,!0),ao(Ei,Uo,()=>{Ze.pxRatio=ue}));var xh=Bc(),kh=qc();function sc(e,t,n,o){return(o?[e[0],e[1]].concat(e.slice(2)):[
e[0]].concat(e.slice(1))).map((s,a)=>ts(s,a,t,n))}function Sh(e,t){return e.map((n,o)=>o==0?{}:Fe({},t,n))}function ts(e,t,n,o){
return Fe({},t==0?n:o,e)}function Kc(e,t,n){return t==null?Ko:[t,n]}var Th=Kc;function Mh(e,t,n){return t==null?Ko:Ci(t,
n,ls,!0)}function jc(e,t,n,o){return t==null?Ko:$i(t,n,e.scales[o].log,!1)}var Eh=jc;function Gc(e,t,n,o){return t==null?
Ko:is(t,n,e.scales[o].log,!1)}var Ch=Gc;function Ph(e,t,n,o,r){let s=dt(zu(e),zu(t)),a=t-e,c=qt(r/o*a,n);do{let p=n[c],m=o*
p/a;if(m>=r&&s+(p<5?Rn.get(p):0)<=17)return[p,m]}while(++c<n.length);return[0,0]}function ac(e){let t,n;return e=e.replace(
/(\d+)px/,(o,r)=>(t=We((n=+r)*ue))+"px"),[e,t,n]}function Ah(e){e.show&&[e.font,e.labelFont].forEach(t=>{let n=ge(t[2]*ue,
1);t[0]=t[0].replace(/[0-9.]+px/,n+"px"),t[1]=n})}function Ze(e,t,n){let o={mode:se(e.mode,1)},r=o.mode;function s(i,u,f,d){
let h=u.valToPct(i);return d+f*(u.dir==-1?1-h:h)}function a(i,u,f,d){let h=u.valToPct(i);return d+f*(u.dir==-1?h:1-h)}function c(i,u,f,d){
return u.ori==0?s(i,u,f,d):a(i,u,f,d)}o.valToPosH=s,o.valToPosV=a;let p=!1;o.status=0;let m=o.root=Lt(Fp);if(e.id!=null&&
(m.id=e.id),yt(m,e.class),e.title){let i=Lt(Hp,m);i.textContent=e.title}let g=Wt("canvas"),_=o.ctx=g.getContext("2d"),w=Lt(
Vp,m);ao("click",w,i=>{i.target===x&&(be!=Mo||Te!=Eo)&&et.click(o,i)},!0);let v=o.under=Lt(Wp,w);w.appendChild(g);let x=o.
over=Lt(qp,w);e=jo(e);let E=+se(e.pxAlign,1),M=rc(E);(e.plugins||[]).forEach(i=>{i.opts&&(e=i.opts(o,e)||e)});let A=e.ms||
.001,y=o.series=r==1?sc(e.series||[],Ju,nc,!1):Sh(e.series||[null],tc),$=o.axes=sc(e.axes||[],Qu,Xu,!0),S=o.scales={},Y=o.
bands=e.bands||[];Y.forEach(i=>{i.fill=ne(i.fill||null),i.dir=se(i.dir,-1)});let O=r==2?y[1].facets[0].scale:y[0].scale,
Q={axes:kf,series:_f},q=(e.drawOrder||["axes","series"]).map(i=>Q[i]);function X(i){let u=i.distr==3?f=>wn(f>0?f:i.clamp(
o,f,i.min,i.max,i.key)):i.distr==4?f=>Wl(f,i.asinh):i.distr==100?f=>i.fwd(f):f=>f;return f=>{let d=u(f),{_min:h,_max:b}=i,
k=b-h;return(d-h)/k}}function W(i){let u=S[i];if(u==null){let f=(e.scales||Ar)[i]||Ar;if(f.from!=null){W(f.from);let d=Fe(
{},S[f.from],f,{key:i});d.valToPct=X(d),S[i]=d}else{u=S[i]=Fe({},i==O?Oc:dh,f),u.key=i;let d=u.time,h=u.range,b=Nn(h);if((i!=
O||r==2&&!d)&&(b&&(h[0]==null||h[1]==null)&&(h={min:h[0]==null?Ou:{mode:1,hard:h[0],soft:h[0]},max:h[1]==null?Ou:{mode:1,
hard:h[1],soft:h[1]}},b=!1),!b&&Li(h))){let k=h;h=(T,C,D)=>C==null?Ko:Ci(C,D,k)}u.range=ne(h||(d?Th:i==O?u.distr==3?Eh:u.
distr==4?Ch:Kc:u.distr==3?jc:u.distr==4?Gc:Mh)),u.auto=ne(b?!1:u.auto),u.clamp=ne(u.clamp||fh),u._min=u._max=null,u.valToPct=
X(u)}}}W("x"),W("y"),r==1&&y.forEach(i=>{W(i.scale)}),$.forEach(i=>{W(i.scale)});for(let i in e.scales)W(i);let P=S[O],U=P.
distr,L,K;P.ori==0?(yt(m,Ip),L=s,K=a):(yt(m,zp),L=a,K=s);let V={};for(let i in S){let u=S[i];(u.min!=null||u.max!=null)&&
(V[i]={min:u.min,max:u.max},u.min=u.max=null)}let oe=e.tzDate||(i=>new Date(We(i/A))),H=e.fmtDate||us,pt=A==1?Im(oe):Vm(
oe),ke=ju(oe,Ku(A==1?Fm:Hm,H)),ie=Yu(oe,Gu(qm,H)),de=[],ee=o.legend=Fe({},Km,e.legend),I=o.cursor=Fe({},Zm,{drag:{y:r==2}},
e.cursor),Ie=ee.show,st=I.show,Se=ee.markers;ee.idxs=de,Se.width=ne(Se.width),Se.dash=ne(Se.dash),Se.stroke=ne(Se.stroke),
Se.fill=ne(Se.fill);let ce,Rt,gt,Ce=[],Bt=[],rn,St=!1,xn={};if(ee.live){let i=y[1]?y[1].values:null;St=i!=null,rn=St?i(o,
1,0):{_:0};for(let u in rn)xn[u]=os}if(Ie)if(ce=Wt("table",Yp,m),gt=Wt("tbody",null,ce),ee.mount(o,ce),St){Rt=Wt("thead",
null,ce,gt);let i=Wt("tr",null,Rt);Wt("th",null,i);for(var fo in rn)Wt("th",ku,i).textContent=fo}else yt(ce,Jp),ee.live&&
yt(ce,Qp);let po={show:!0},Xo={show:!1};function Dr(i,u){if(u==0&&(St||!ee.live||r==2))return Ko;let f=[],d=Wt("tr",Zp,gt,
gt.childNodes[u]);yt(d,i.class),i.show||yt(d,so);let h=Wt("th",null,d);if(Se.show){let T=Lt(Xp,h);if(u>0){let C=Se.width(
o,u);C&&(T.style.border=C+"px "+Se.dash(o,u)+" "+Se.stroke(o,u)),T.style.background=Se.fill(o,u)}}let b=Lt(ku,h);i.label instanceof
HTMLElement?b.appendChild(i.label):b.textContent=i.label,u>0&&(Se.show||(b.style.color=i.width>0?Se.stroke(o,u):Se.fill(
o,u)),at("click",h,T=>{if(I._lock)return;Vn(T);let C=y.indexOf(i);if((T.ctrlKey||T.metaKey)!=ee.isolate){let D=y.some((N,F)=>F>
0&&F!=C&&N.show);y.forEach((N,F)=>{F>0&&Gt(F,D?F==C?po:Xo:po,!0,Oe.setSeries)})}else Gt(C,{show:!i.show},!0,Oe.setSeries)},
!1),vo&&at(Eu,h,T=>{I._lock||(Vn(T),Gt(y.indexOf(i),Po,!0,Oe.setSeries))},!1));for(var k in rn){let T=Wt("td",em,d);T.textContent=
"--",f.push(T)}return[d,f]}let On=new Map;function at(i,u,f,d=!0){let h=On.get(u)||{},b=I.bind[i](o,u,f,d);b&&(ao(i,u,h[i]=
b),On.set(u,h))}function mo(i,u,f){let d=On.get(u)||{};for(let h in d)(i==null||h==i)&&(Yl(h,u,d[h]),delete d[h]);i==null&&
On.delete(u)}let ln=0,Fn=0,Z=0,R=0,ve=0,ze=0,ho=ve,In=ze,Kt=Z,zn=R,vt=0,Tt=0,mt=0,Ot=0;o.bbox={};let zi=!1,Lr=!1,go=!1,Hn=!1,
Nr=!1,Mt=!1;function Hi(i,u,f){(f||i!=o.width||u!=o.height)&&bs(i,u),xo(!1),go=!0,Lr=!0,ko()}function bs(i,u){o.width=ln=
Z=i,o.height=Fn=R=u,ve=ze=0,ff(),df();let f=o.bbox;vt=f.left=io(ve*ue,.5),Tt=f.top=io(ze*ue,.5),mt=f.width=io(Z*ue,.5),Ot=
f.height=io(R*ue,.5)}let af=3;function uf(){let i=!1,u=0;for(;!i;){u++;let f=yf(u),d=xf(u);i=u==af||f&&d,i||(bs(o.width,
o.height),Lr=!0)}}function cf({width:i,height:u}){Hi(i,u)}o.setSize=cf;function ff(){let i=!1,u=!1,f=!1,d=!1;$.forEach((h,b)=>{
if(h.show&&h._show){let{side:k,_size:T}=h,C=k%2,D=h.label!=null?h.labelSize:0,N=T+D;N>0&&(C?(Z-=N,k==3?(ve+=N,d=!0):f=!0):
(R-=N,k==0?(ze+=N,i=!0):u=!0))}}),Wn[0]=i,Wn[1]=f,Wn[2]=u,Wn[3]=d,Z-=kn[1]+kn[3],ve+=kn[3],R-=kn[2]+kn[0],ze+=kn[0]}function df(){
let i=ve+Z,u=ze+R,f=ve,d=ze;function h(b,k){switch(b){case 1:return i+=k,i-k;case 2:return u+=k,u-k;case 3:return f-=k,f+
k;case 0:return d-=k,d+k}}$.forEach((b,k)=>{if(b.show&&b._show){let T=b.side;b._pos=h(T,b._size),b.label!=null&&(b._lpos=
h(T,b.labelSize))}})}if(I.dataIdx==null){let i=I.hover,u=i.skip=new Set(i.skip??[]);u.add(void 0);let f=i.prox=ne(i.prox),
d=i.bias??=0;I.dataIdx=(h,b,k,T)=>{if(b==0)return k;let C=k,D=f(h,b,k,T)??he,N=D>=0&&D<he,F=P.ori==0?Z:R,j=I.left,ae=t[0],
le=t[b];if(u.has(le[k])){C=null;let te=null,B=null,z;if(d==0||d==-1)for(z=k;te==null&&z-- >0;)u.has(le[z])||(te=z);if(d==
0||d==1)for(z=k;B==null&&z++<le.length;)u.has(le[z])||(B=z);if(te!=null||B!=null)if(N){let ye=te==null?-1/0:L(ae[te],P,F,
0),$e=B==null?1/0:L(ae[B],P,F,0),Ye=j-ye,pe=$e-j;Ye<=pe?Ye<=D&&(C=te):pe<=D&&(C=B)}else C=B==null?te:te==null?B:k-te<=B-
k?te:B}else N&&qe(j-L(ae[k],P,F,0))>D&&(C=null);return C}}let Vn=i=>{I.event=i};I.idxs=de,I._lock=!1;let it=I.points;it.
show=ne(it.show),it.size=ne(it.size),it.stroke=ne(it.stroke),it.width=ne(it.width),it.fill=ne(it.fill);let jt=o.focus=Fe(
{},e.focus||{alpha:.3},I.focus),vo=jt.prox>=0,_o=vo&&it.one,Et=[],bo=[],wo=[];function ws(i,u){let f=it.show(o,u);if(f instanceof
HTMLElement)return yt(f,Gp),yt(f,i.class),on(f,-10,-10,Z,R),x.insertBefore(f,Et[u]),f}function ys(i,u){if(r==1||u>0){let f=r==
1&&S[i.scale].time,d=i.value;i.value=f?Wu(d)?Yu(oe,Gu(d,H)):d||ie:d||ah,i.label=i.label||(f?eh:Xm)}if(_o||u>0){i.width=i.
width==null?1:i.width,i.paths=i.paths||xh||dm,i.fillTo=ne(i.fillTo||ph),i.pxAlign=+se(i.pxAlign,E),i.pxRound=rc(i.pxAlign),
i.stroke=ne(i.stroke||null),i.fill=ne(i.fill||null),i._stroke=i._fill=i._paths=i._focus=null;let f=uh(dt(1,i.width),1),d=i.
points=Fe({},{size:f,width:dt(1,f*.2),stroke:i.stroke,space:f*2,paths:kh,_stroke:null,_fill:null},i.points);d.show=ne(d.
show),d.filter=ne(d.filter),d.fill=ne(d.fill),d.stroke=ne(d.stroke),d.paths=ne(d.paths),d.pxAlign=i.pxAlign}if(Ie){let f=Dr(
i,u);Ce.splice(u,0,f[0]),Bt.splice(u,0,f[1]),ee.values.push(null)}if(st){de.splice(u,0,null);let f=null;_o?u==0&&(f=ws(i,
u)):u>0&&(f=ws(i,u)),Et.splice(u,0,f),bo.splice(u,0,0),wo.splice(u,0,0)}Ge("addSeries",u)}function pf(i,u){u=u??y.length,
i=r==1?ts(i,u,Ju,nc):ts(i,u,{},tc),y.splice(u,0,i),ys(y[u],u)}o.addSeries=pf;function mf(i){if(y.splice(i,1),Ie){ee.values.
splice(i,1),Bt.splice(i,1);let u=Ce.splice(i,1)[0];mo(null,u.firstChild),u.remove()}st&&(de.splice(i,1),Et.splice(i,1)[0].
remove(),bo.splice(i,1),wo.splice(i,1)),Ge("delSeries",i)}o.delSeries=mf;let Wn=[!1,!1,!1,!1];function hf(i,u){if(i._show=
i.show,i.show){let f=i.side%2,d=S[i.scale];d==null&&(i.scale=f?y[1].scale:O,d=S[i.scale]);let h=d.time;i.size=ne(i.size),
i.space=ne(i.space),i.rotate=ne(i.rotate),Nn(i.incrs)&&i.incrs.forEach(k=>{!Rn.has(k)&&Rn.set(k,vc(k))}),i.incrs=ne(i.incrs||
(d.distr==2?Nm:h?A==1?Om:zm:lo)),i.splits=ne(i.splits||(h&&d.distr==1?pt:d.distr==3?Jl:d.distr==4?oh:nh)),i.stroke=ne(i.
stroke),i.grid.stroke=ne(i.grid.stroke),i.ticks.stroke=ne(i.ticks.stroke),i.border.stroke=ne(i.border.stroke);let b=i.values;
i.values=Nn(b)&&!Nn(b[0])?ne(b):h?Nn(b)?ju(oe,Ku(b,H)):Wu(b)?Wm(oe,b):b||ke:b||th,i.filter=ne(i.filter||(d.distr>=3&&d.log==
10?lh:d.distr==3&&d.log==2?sh:hc)),i.font=ac(i.font),i.labelFont=ac(i.labelFont),i._size=i.size(o,null,u,0),i._space=i._rotate=
i._incrs=i._found=i._splits=i._values=null,i._size>0&&(Wn[u]=!0,i._el=Lt(Up,w))}}function er(i,u,f,d){let[h,b,k,T]=f,C=u%
2,D=0;return C==0&&(T||b)&&(D=u==0&&!h||u==2&&!k?We(Qu.size/3):0),C==1&&(h||k)&&(D=u==1&&!b||u==3&&!T?We(Xu.size/2):0),D}
let xs=o.padding=(e.padding||[er,er,er,er]).map(i=>ne(se(i,er))),kn=o._padding=xs.map((i,u)=>i(o,u,Wn,0)),Xe,Ue=null,Be=null,
Rr=r==1?y[0].idxs:null,Ft=null,tr=!1;function ks(i,u){if(t=i??[],o.data=o._data=t,r==2){Xe=0;for(let f=1;f<y.length;f++)
Xe+=t[f][0].length}else{t.length==0&&(o.data=o._data=t=[[]]),Ft=t[0],Xe=Ft.length;let f=t;if(U==2){f=t.slice();let d=f[0]=
Array(Xe);for(let h=0;h<Xe;h++)d[h]=h}o._data=t=f}if(xo(!0),Ge("setData"),U==2&&(go=!0),u!==!1){let f=P;f.auto(o,tr)?Vi():
Tn(O,f.min,f.max),Hn=Hn||I.left>=0,Mt=!0,ko()}}o.setData=ks;function Vi(){tr=!0;let i,u;r==1&&(Xe>0?(Ue=Rr[0]=0,Be=Rr[1]=
Xe-1,i=t[0][Ue],u=t[0][Be],U==2?(i=Ue,u=Be):i==u&&(U==3?[i,u]=$i(i,i,P.log,!1):U==4?[i,u]=is(i,i,P.log,!1):P.time?u=i+We(
86400/A):[i,u]=Ci(i,u,ls,!0))):(Ue=Rr[0]=i=null,Be=Rr[1]=u=null)),Tn(O,i,u)}let Or,yo,Wi,qi,Ui,Bi,Ki,ji,Gi,ht;function Ss(i,u,f,d,h,b){
i??=Tu,f??=as,d??="butt",h??=Tu,b??="round",i!=Or&&(_.strokeStyle=Or=i),h!=yo&&(_.fillStyle=yo=h),u!=Wi&&(_.lineWidth=Wi=
u),b!=Ui&&(_.lineJoin=Ui=b),d!=Bi&&(_.lineCap=Bi=d),f!=qi&&_.setLineDash(qi=f)}function Ts(i,u,f,d){u!=yo&&(_.fillStyle=
yo=u),i!=Ki&&(_.font=Ki=i),f!=ji&&(_.textAlign=ji=f),d!=Gi&&(_.textBaseline=Gi=d)}function Yi(i,u,f,d,h=0){if(d.length>0&&
i.auto(o,tr)&&(u==null||u.min==null)){let b=se(Ue,0),k=se(Be,d.length-1),T=f.min==null?lm(d,b,k,h,i.distr==3):[f.min,f.max];
i.min=Ut(i.min,f.min=T[0]),i.max=dt(i.max,f.max=T[1])}}let Ms={min:null,max:null};function gf(){for(let d in S){let h=S[d];
V[d]==null&&(h.min==null||V[O]!=null&&h.auto(o,tr))&&(V[d]=Ms)}for(let d in S){let h=S[d];V[d]==null&&h.from!=null&&V[h.
from]!=null&&(V[d]=Ms)}V[O]!=null&&xo(!0);let i={};for(let d in V){let h=V[d];if(h!=null){let b=i[d]=jo(S[d],hm);if(h.min!=
null)Fe(b,h);else if(d!=O||r==2)if(Xe==0&&b.from==null){let k=b.range(o,null,null,d);b.min=k[0],b.max=k[1]}else b.min=he,
b.max=-he}}if(Xe>0){y.forEach((d,h)=>{if(r==1){let b=d.scale,k=V[b];if(k==null)return;let T=i[b];if(h==0){let C=T.range(
o,T.min,T.max,b);T.min=C[0],T.max=C[1],Ue=qt(T.min,t[0]),Be=qt(T.max,t[0]),Be-Ue>1&&(t[0][Ue]<T.min&&Ue++,t[0][Be]>T.max&&
Be--),d.min=Ft[Ue],d.max=Ft[Be]}else d.show&&d.auto&&Yi(T,k,d,t[h],d.sorted);d.idxs[0]=Ue,d.idxs[1]=Be}else if(h>0&&d.show&&
d.auto){let[b,k]=d.facets,T=b.scale,C=k.scale,[D,N]=t[h],F=i[T],j=i[C];F!=null&&Yi(F,V[T],b,D,b.sorted),j!=null&&Yi(j,V[C],
k,N,k.sorted),d.min=k.min,d.max=k.max}});for(let d in i){let h=i[d],b=V[d];if(h.from==null&&(b==null||b.min==null)){let k=h.
range(o,h.min==he?null:h.min,h.max==-he?null:h.max,d);h.min=k[0],h.max=k[1]}}}for(let d in i){let h=i[d];if(h.from!=null){
let b=i[h.from];if(b.min==null)h.min=h.max=null;else{let k=h.range(o,b.min,b.max,d);h.min=k[0],h.max=k[1]}}}let u={},f=!1;
for(let d in i){let h=i[d],b=S[d];if(b.min!=h.min||b.max!=h.max){b.min=h.min,b.max=h.max;let k=b.distr;b._min=k==3?wn(b.
min):k==4?Wl(b.min,b.asinh):k==100?b.fwd(b.min):b.min,b._max=k==3?wn(b.max):k==4?Wl(b.max,b.asinh):k==100?b.fwd(b.max):b.
max,u[d]=f=!0}}if(f){y.forEach((d,h)=>{r==2?h>0&&u.y&&(d._paths=null):u[d.scale]&&(d._paths=null)});for(let d in u)go=!0,
Ge("setScale",d);st&&I.left>=0&&(Hn=Mt=!0)}for(let d in V)V[d]=null}function vf(i){let u=Ql(Ue-1,0,Xe-1),f=Ql(Be+1,0,Xe-
1);for(;i[u]==null&&u>0;)u--;for(;i[f]==null&&f<Xe-1;)f++;return[u,f]}function _f(){if(Xe>0){let i=y.some(u=>u._focus)&&
ht!=jt.alpha;i&&(_.globalAlpha=ht=jt.alpha),y.forEach((u,f)=>{if(f>0&&u.show&&(Es(f,!1),Es(f,!0),u._paths==null)){let d=ht;
ht!=u.alpha&&(_.globalAlpha=ht=u.alpha);let h=r==2?[0,t[f][0].length-1]:vf(t[f]);u._paths=u.paths(o,f,h[0],h[1]),ht!=d&&
(_.globalAlpha=ht=d)}}),y.forEach((u,f)=>{if(f>0&&u.show){let d=ht;ht!=u.alpha&&(_.globalAlpha=ht=u.alpha),u._paths!=null&&
Cs(f,!1);{let h=u._paths!=null?u._paths.gaps:null,b=u.points.show(o,f,Ue,Be,h),k=u.points.filter(o,f,b,h);(b||k)&&(u.points.
_paths=u.points.paths(o,f,Ue,Be,k),Cs(f,!0))}ht!=d&&(_.globalAlpha=ht=d),Ge("drawSeries",f)}}),i&&(_.globalAlpha=ht=1)}}
function Es(i,u){let f=u?y[i].points:y[i];f._stroke=f.stroke(o,i),f._fill=f.fill(o,i)}function Cs(i,u){let f=u?y[i].points:
y[i],{stroke:d,fill:h,clip:b,flags:k,_stroke:T=f._stroke,_fill:C=f._fill,_width:D=f.width}=f._paths;D=ge(D*ue,3);let N=null,
F=D%2/2;u&&C==null&&(C=D>0?"#fff":T);let j=f.pxAlign==1&&F>0;if(j&&_.translate(F,F),!u){let ae=vt-D/2,le=Tt-D/2,te=mt+D,
B=Ot+D;N=new Path2D,N.rect(ae,le,te,B)}u?Qi(T,D,f.dash,f.cap,C,d,h,k,b):bf(i,T,D,f.dash,f.cap,C,d,h,k,N,b),j&&_.translate(
-F,-F)}function bf(i,u,f,d,h,b,k,T,C,D,N){let F=!1;C!=0&&Y.forEach((j,ae)=>{if(j.series[0]==i){let le=y[j.series[1]],te=t[j.
series[1]],B=(le._paths||Ar).band;Nn(B)&&(B=j.dir==1?B[0]:B[1]);let z,ye=null;le.show&&B&&am(te,Ue,Be)?(ye=j.fill(o,ae)||
b,z=le._paths.clip):B=null,Qi(u,f,d,h,ye,k,T,C,D,N,z,B),F=!0}}),F||Qi(u,f,d,h,b,k,T,C,D,N)}let Ps=Go|Xl;function Qi(i,u,f,d,h,b,k,T,C,D,N,F){
Ss(i,u,f,d,h),(C||D||F)&&(_.save(),C&&_.clip(C),D&&_.clip(D)),F?(T&Ps)==Ps?(_.clip(F),N&&_.clip(N),Ir(h,k),Fr(i,b,u)):T&
Xl?(Ir(h,k),_.clip(F),Fr(i,b,u)):T&Go&&(_.save(),_.clip(F),N&&_.clip(N),Ir(h,k),_.restore(),Fr(i,b,u)):(Ir(h,k),Fr(i,b,u)),
(C||D||F)&&_.restore()}function Fr(i,u,f){f>0&&(u instanceof Map?u.forEach((d,h)=>{_.strokeStyle=Or=h,_.stroke(d)}):u!=null&&
i&&_.stroke(u))}function Ir(i,u){u instanceof Map?u.forEach((f,d)=>{_.fillStyle=yo=d,_.fill(f)}):u!=null&&i&&_.fill(u)}function wf(i,u,f,d){
let h=$[i],b;if(d<=0)b=[0,0];else{let k=h._space=h.space(o,i,u,f,d),T=h._incrs=h.incrs(o,i,u,f,d,k);b=Ph(u,f,T,d,k)}return h.
_found=b}function Ji(i,u,f,d,h,b,k,T,C,D){let N=k%2/2;E==1&&_.translate(N,N),Ss(T,k,C,D,T),_.beginPath();let F,j,ae,le,te=h+
(d==0||d==3?-b:b);f==0?(j=h,le=te):(F=h,ae=te);for(let B=0;B<i.length;B++)u[B]!=null&&(f==0?F=ae=i[B]:j=le=i[B],_.moveTo(
F,j),_.lineTo(ae,le));_.stroke(),E==1&&_.translate(-N,-N)}function yf(i){let u=!0;return $.forEach((f,d)=>{if(!f.show)return;
let h=S[f.scale];if(h.min==null){f._show&&(u=!1,f._show=!1,xo(!1));return}else f._show||(u=!1,f._show=!0,xo(!1));let b=f.
side,k=b%2,{min:T,max:C}=h,[D,N]=wf(d,T,C,k==0?Z:R);if(N==0)return;let F=h.distr==2,j=f._splits=f.splits(o,d,T,C,D,N,F),
ae=h.distr==2?j.map(z=>Ft[z]):j,le=h.distr==2?Ft[j[1]]-Ft[j[0]]:D,te=f._values=f.values(o,f.filter(o,ae,d,N,le),d,N,le);
f._rotate=b==2?f.rotate(o,te,d,N):0;let B=f._size;f._size=Nt(f.size(o,te,d,i)),B!=null&&f._size!=B&&(u=!1)}),u}function xf(i){
let u=!0;return xs.forEach((f,d)=>{let h=f(o,d,Wn,i);h!=kn[d]&&(u=!1),kn[d]=h}),u}function kf(){for(let i=0;i<$.length;i++){
let u=$[i];if(!u.show||!u._show)continue;let f=u.side,d=f%2,h,b,k=u.stroke(o,i),T=f==0||f==3?-1:1,[C,D]=u._found;if(u.label!=
null){let ct=u.labelGap*T,wt=We((u._lpos+ct)*ue);Ts(u.labelFont[0],k,"center",f==2?"top":Su),_.save(),d==1?(h=b=0,_.translate(
wt,We(Tt+Ot/2)),_.rotate((f==3?-Mi:Mi)/2)):(h=We(vt+mt/2),b=wt);let Bn=pc(u.label)?u.label(o,i,C,D):u.label;_.fillText(Bn,
h,b),_.restore()}if(D==0)continue;let N=S[u.scale],F=d==0?mt:Ot,j=d==0?vt:Tt,ae=u._splits,le=N.distr==2?ae.map(ct=>Ft[ct]):
ae,te=N.distr==2?Ft[ae[1]]-Ft[ae[0]]:C,B=u.ticks,z=u.border,ye=B.show?B.size:0,$e=We(ye*ue),Ye=We((u.alignTo==2?u._size-
ye-u.gap:u.gap)*ue),pe=u._rotate*-Mi/180,De=M(u._pos*ue),_t=($e+Ye)*T,ut=De+_t;b=d==0?ut:0,h=d==1?ut:0;let Ct=u.font[0],
It=u.align==1?Wo:u.align==2?zl:pe>0?Wo:pe<0?zl:d==0?"center":f==3?zl:Wo,Qt=pe||d==1?"middle":f==2?"top":Su;Ts(Ct,k,It,Qt);
let bt=u.font[1]*u.lineGap,Pt=ae.map(ct=>M(c(ct,N,F,j))),zt=u._values;for(let ct=0;ct<zt.length;ct++){let wt=zt[ct];if(wt!=
null){d==0?h=Pt[ct]:b=Pt[ct],wt=""+wt;let Bn=wt.indexOf(`
`)==-1?[wt]:wt.split(/\n/gm);for(let ft=0;ft<Bn.length;ft++){let Gs=Bn[ft];pe?(_.save(),_.translate(h,b+ft*bt),_.rotate(
pe),_.fillText(Gs,0,0),_.restore()):_.fillText(Gs,h,b+ft*bt)}}}B.show&&Ji(Pt,B.filter(o,le,i,D,te),d,f,De,$e,ge(B.width*
ue,3),B.stroke(o,i),B.dash,B.cap);let Jt=u.grid;Jt.show&&Ji(Pt,Jt.filter(o,le,i,D,te),d,d==0?2:1,d==0?Tt:vt,d==0?Ot:mt,ge(
Jt.width*ue,3),Jt.stroke(o,i),Jt.dash,Jt.cap),z.show&&Ji([De],[1],d==0?1:0,d==0?1:2,d==1?Tt:vt,d==1?Ot:mt,ge(z.width*ue,
3),z.stroke(o,i),z.dash,z.cap)}Ge("drawAxes")}function xo(i){y.forEach((u,f)=>{f>0&&(u._paths=null,i&&(r==1?(u.min=null,
u.max=null):u.facets.forEach(d=>{d.min=null,d.max=null})))})}let zr=!1,Zi=!1,nr=[];function Sf(){Zi=!1;for(let i=0;i<nr.
length;i++)Ge(...nr[i]);nr.length=0}function ko(){zr||(xm(As),zr=!0)}function Tf(i,u=!1){zr=!0,Zi=u,i(o),As(),u&&nr.length>
0&&queueMicrotask(Sf)}o.batch=Tf;function As(){if(zi&&(gf(),zi=!1),go&&(uf(),go=!1),Lr){if(xe(v,Wo,ve),xe(v,"top",ze),xe(
v,Mr,Z),xe(v,Er,R),xe(x,Wo,ve),xe(x,"top",ze),xe(x,Mr,Z),xe(x,Er,R),xe(w,Mr,ln),xe(w,Er,Fn),g.width=We(ln*ue),g.height=We(
Fn*ue),$.forEach(({_el:i,_show:u,_size:f,_pos:d,side:h})=>{if(i!=null)if(u){let b=h===3||h===0?f:0,k=h%2==1;xe(i,k?"left":
"top",d-b),xe(i,k?"width":"height",f),xe(i,k?"top":"left",k?ze:ve),xe(i,k?"height":"width",k?R:Z),Gl(i,so)}else yt(i,so)}),
Or=yo=Wi=Ui=Bi=Ki=ji=Gi=qi=null,ht=1,ir(!0),ve!=ho||ze!=In||Z!=Kt||R!=zn){xo(!1);let i=Z/Kt,u=R/zn;if(st&&!Hn&&I.left>=0){
I.left*=i,I.top*=u,So&&on(So,We(I.left),0,Z,R),To&&on(To,0,We(I.top),Z,R);for(let f=0;f<Et.length;f++){let d=Et[f];d!=null&&
(bo[f]*=i,wo[f]*=u,on(d,Nt(bo[f]),Nt(wo[f]),Z,R))}}if(we.show&&!Nr&&we.left>=0&&we.width>0){we.left*=i,we.width*=i,we.top*=
u,we.height*=u;for(let f in rl)xe(Co,f,we[f])}ho=ve,In=ze,Kt=Z,zn=R}Ge("setSize"),Lr=!1}ln>0&&Fn>0&&(_.clearRect(0,0,g.width,
g.height),Ge("drawClear"),q.forEach(i=>i()),Ge("draw")),we.show&&Nr&&(Hr(we),Nr=!1),st&&Hn&&(Un(null,!0,!1),Hn=!1),ee.show&&
ee.live&&Mt&&(nl(),Mt=!1),p||(p=!0,o.status=1,Ge("ready")),tr=!1,zr=!1}o.redraw=(i,u)=>{go=u||!1,i!==!1?Tn(O,P.min,P.max):
ko()};function Xi(i,u){let f=S[i];if(f.from==null){if(Xe==0){let d=f.range(o,u.min,u.max,i);u.min=d[0],u.max=d[1]}if(u.min>
u.max){let d=u.min;u.min=u.max,u.max=d}if(Xe>1&&u.min!=null&&u.max!=null&&u.max-u.min<1e-16)return;i==O&&f.distr==2&&Xe>
0&&(u.min=qt(u.min,t[0]),u.max=qt(u.max,t[0]),u.min==u.max&&u.max++),V[i]=u,zi=!0,ko()}}o.setScale=Xi;let el,tl,So,To,$s,
Ds,Mo,Eo,Ls,Ns,be,Te,Sn=!1,et=I.drag,Ke=et.x,je=et.y;st&&(I.x&&(el=Lt(Kp,x)),I.y&&(tl=Lt(jp,x)),P.ori==0?(So=el,To=tl):(So=
tl,To=el),be=I.left,Te=I.top);let we=o.select=Fe({show:!0,over:!0,left:0,width:0,top:0,height:0},e.select),Co=we.show?Lt(
Bp,we.over?x:v):null;function Hr(i,u){if(we.show){for(let f in i)we[f]=i[f],f in rl&&xe(Co,f,i[f]);u!==!1&&Ge("setSelect")}}
o.setSelect=Hr;function Mf(i){if(y[i].show)Ie&&Gl(Ce[i],so);else if(Ie&&yt(Ce[i],so),st){let f=_o?Et[0]:Et[i];f!=null&&on(
f,-10,-10,Z,R)}}function Tn(i,u,f){Xi(i,{min:u,max:f})}function Gt(i,u,f,d){u.focus!=null&&$f(i),u.show!=null&&y.forEach(
(h,b)=>{b>0&&(i==b||i==null)&&(h.show=u.show,Mf(b),r==2?(Tn(h.facets[0].scale,null,null),Tn(h.facets[1].scale,null,null)):
Tn(h.scale,null,null),ko())}),f!==!1&&Ge("setSeries",i,u),d&&lr("setSeries",o,i,u)}o.setSeries=Gt;function Ef(i,u){Fe(Y[i],
u)}function Cf(i,u){i.fill=ne(i.fill||null),i.dir=se(i.dir,-1),u=u??Y.length,Y.splice(u,0,i)}function Pf(i){i==null?Y.length=
0:Y.splice(i,1)}o.addBand=Cf,o.setBand=Ef,o.delBand=Pf;function Af(i,u){y[i].alpha=u,st&&Et[i]!=null&&(Et[i].style.opacity=
u),Ie&&Ce[i]&&(Ce[i].style.opacity=u)}let sn,Mn,qn,Po={focus:!0};function $f(i){if(i!=qn){let u=i==null,f=jt.alpha!=1;y.
forEach((d,h)=>{if(r==1||h>0){let b=u||h==0||h==i;d._focus=u?null:b,f&&Af(h,b?1:jt.alpha)}}),qn=i,f&&ko()}}Ie&&vo&&at(Cu,
ce,i=>{I._lock||(Vn(i),qn!=null&&Gt(null,Po,!0,Oe.setSeries))});function Yt(i,u,f){let d=S[u];f&&(i=i/ue-(d.ori==1?ze:ve));
let h=Z;d.ori==1&&(h=R,i=h-i),d.dir==-1&&(i=h-i);let b=d._min,k=d._max,T=i/h,C=b+(k-b)*T,D=d.distr;return D==3?Bo(10,C):
D==4?cm(C,d.asinh):D==100?d.bwd(C):C}function Df(i,u){let f=Yt(i,O,u);return qt(f,t[0],Ue,Be)}o.valToIdx=i=>qt(i,t[0]),o.
posToIdx=Df,o.posToVal=Yt,o.valToPos=(i,u,f)=>S[u].ori==0?s(i,S[u],f?mt:Z,f?vt:0):a(i,S[u],f?Ot:R,f?Tt:0),o.setCursor=(i,u,f)=>{
be=i.left,Te=i.top,Un(null,u,f)};function Rs(i,u){xe(Co,Wo,we.left=i),xe(Co,Mr,we.width=u)}function Os(i,u){xe(Co,"top",
we.top=i),xe(Co,Er,we.height=u)}let or=P.ori==0?Rs:Os,rr=P.ori==1?Rs:Os;function Lf(){if(Ie&&ee.live)for(let i=r==2?1:0;i<
y.length;i++){if(i==0&&St)continue;let u=ee.values[i],f=0;for(let d in u)Bt[i][f++].firstChild.nodeValue=u[d]}}function nl(i,u){
if(i!=null&&(i.idxs?i.idxs.forEach((f,d)=>{de[d]=f}):mm(i.idx)||de.fill(i.idx),ee.idx=de[0]),Ie&&ee.live){for(let f=0;f<
y.length;f++)(f>0||r==1&&!St)&&Nf(f,de[f]);Lf()}Mt=!1,u!==!1&&Ge("setLegend")}o.setLegend=nl;function Nf(i,u){let f=y[i],
d=i==0&&U==2?Ft:t[i],h;St?h=f.values(o,i,u)??xn:(h=f.value(o,u==null?null:d[u],i,u),h=h==null?xn:{_:h}),ee.values[i]=h}function Un(i,u,f){
Ls=be,Ns=Te,[be,Te]=I.move(o,be,Te),I.left=be,I.top=Te,st&&(So&&on(So,We(be),0,Z,R),To&&on(To,0,We(Te),Z,R));let d,h=Ue>
Be;sn=he,Mn=null;let b=P.ori==0?Z:R,k=P.ori==1?Z:R;if(be<0||Xe==0||h){d=I.idx=null;for(let T=0;T<y.length;T++){let C=Et[T];
C!=null&&on(C,-10,-10,Z,R)}vo&&Gt(null,Po,!0,i==null&&Oe.setSeries),ee.live&&(de.fill(d),Mt=!0)}else{let T,C,D;r==1&&(T=
P.ori==0?be:Te,C=Yt(T,O),d=I.idx=qt(C,t[0],Ue,Be),D=L(t[0][d],P,b,0));let N=-10,F=-10,j=0,ae=0,le=!0,te="",B="";for(let z=r==
2?1:0;z<y.length;z++){let ye=y[z],$e=de[z],Ye=$e==null?null:r==1?t[z][$e]:t[z][1][$e],pe=I.dataIdx(o,z,d,C),De=pe==null?
null:r==1?t[z][pe]:t[z][1][pe];if(Mt=Mt||De!=Ye||pe!=$e,de[z]=pe,z>0&&ye.show){let _t=pe==null?-10:pe==d?D:L(r==1?t[0][pe]:
t[z][0][pe],P,b,0),ut=De==null?-10:K(De,r==1?S[ye.scale]:S[ye.facets[1].scale],k,0);if(vo&&De!=null){let Ct=P.ori==1?be:
Te,It=qe(jt.dist(o,z,pe,ut,Ct));if(It<sn){let Qt=jt.bias;if(Qt!=0){let bt=Yt(Ct,ye.scale),Pt=De>=0?1:-1,zt=bt>=0?1:-1;zt==
Pt&&(zt==1?Qt==1?De>=bt:De<=bt:Qt==1?De<=bt:De>=bt)&&(sn=It,Mn=z)}else sn=It,Mn=z}}if(Mt||_o){let Ct,It;P.ori==0?(Ct=_t,
It=ut):(Ct=ut,It=_t);let Qt,bt,Pt,zt,Jt,ct,wt=!0,Bn=it.bbox;if(Bn!=null){wt=!1;let ft=Bn(o,z);Pt=ft.left,zt=ft.top,Qt=ft.
width,bt=ft.height}else Pt=Ct,zt=It,Qt=bt=it.size(o,z);if(ct=it.fill(o,z),Jt=it.stroke(o,z),_o)z==Mn&&sn<=jt.prox&&(N=Pt,
F=zt,j=Qt,ae=bt,le=wt,te=ct,B=Jt);else{let ft=Et[z];ft!=null&&(bo[z]=Pt,wo[z]=zt,Ru(ft,Qt,bt,wt),Lu(ft,ct,Jt),on(ft,Nt(Pt),
Nt(zt),Z,R))}}}}if(_o){let z=jt.prox,ye=qn==null?sn<=z:sn>z||Mn!=qn;if(Mt||ye){let $e=Et[0];$e!=null&&(bo[0]=N,wo[0]=F,Ru(
$e,j,ae,le),Lu($e,te,B),on($e,Nt(N),Nt(F),Z,R))}}}if(we.show&&Sn)if(i!=null){let[T,C]=Oe.scales,[D,N]=Oe.match,[F,j]=i.cursor.
sync.scales,ae=i.cursor.drag;if(Ke=ae._x,je=ae._y,Ke||je){let{left:le,top:te,width:B,height:z}=i.select,ye=i.scales[F].ori,
$e=i.posToVal,Ye,pe,De,_t,ut,Ct=T!=null&&D(T,F),It=C!=null&&N(C,j);Ct&&Ke?(ye==0?(Ye=le,pe=B):(Ye=te,pe=z),De=S[T],_t=L(
$e(Ye,F),De,b,0),ut=L($e(Ye+pe,F),De,b,0),or(Ut(_t,ut),qe(ut-_t))):or(0,b),It&&je?(ye==1?(Ye=le,pe=B):(Ye=te,pe=z),De=S[C],
_t=K($e(Ye,j),De,k,0),ut=K($e(Ye+pe,j),De,k,0),rr(Ut(_t,ut),qe(ut-_t))):rr(0,k)}else il()}else{let T=qe(Ls-$s),C=qe(Ns-Ds);
if(P.ori==1){let j=T;T=C,C=j}Ke=et.x&&T>=et.dist,je=et.y&&C>=et.dist;let D=et.uni;D!=null?Ke&&je&&(Ke=T>=D,je=C>=D,!Ke&&
!je&&(C>T?je=!0:Ke=!0)):et.x&&et.y&&(Ke||je)&&(Ke=je=!0);let N,F;Ke&&(P.ori==0?(N=Mo,F=be):(N=Eo,F=Te),or(Ut(N,F),qe(F-N)),
je||rr(0,k)),je&&(P.ori==1?(N=Mo,F=be):(N=Eo,F=Te),rr(Ut(N,F),qe(F-N)),Ke||or(0,b)),!Ke&&!je&&(or(0,0),rr(0,0))}if(et._x=
Ke,et._y=je,i==null){if(f){if(js!=null){let[T,C]=Oe.scales;Oe.values[0]=T!=null?Yt(P.ori==0?be:Te,T):null,Oe.values[1]=C!=
null?Yt(P.ori==1?be:Te,C):null}lr(Hl,o,be,Te,Z,R,d)}if(vo){let T=f&&Oe.setSeries,C=jt.prox;qn==null?sn<=C&&Gt(Mn,Po,!0,T):
sn>C?Gt(null,Po,!0,T):Mn!=qn&&Gt(Mn,Po,!0,T)}}Mt&&(ee.idx=d,nl()),u!==!1&&Ge("setCursor")}let En=null;Object.defineProperty(
o,"rect",{get(){return En==null&&ir(!1),En}});function ir(i=!1){i?En=null:(En=x.getBoundingClientRect(),Ge("syncRect",En))}
function Fs(i,u,f,d,h,b,k){I._lock||Sn&&i!=null&&i.movementX==0&&i.movementY==0||(ol(i,u,f,d,h,b,k,!1,i!=null),i!=null?Un(
null,!0,!0):Un(u,!0,!1))}function ol(i,u,f,d,h,b,k,T,C){if(En==null&&ir(!1),Vn(i),i!=null)f=i.clientX-En.left,d=i.clientY-
En.top;else{if(f<0||d<0){be=-10,Te=-10;return}let[D,N]=Oe.scales,F=u.cursor.sync,[j,ae]=F.values,[le,te]=F.scales,[B,z]=Oe.
match,ye=u.axes[0].side%2==1,$e=P.ori==0?Z:R,Ye=P.ori==1?Z:R,pe=ye?b:h,De=ye?h:b,_t=ye?d:f,ut=ye?f:d;if(le!=null?f=B(D,le)?
c(j,S[D],$e,0):-10:f=$e*(_t/pe),te!=null?d=z(N,te)?c(ae,S[N],Ye,0):-10:d=Ye*(ut/De),P.ori==1){let Ct=f;f=d,d=Ct}}C&&(u==
null||u.cursor.event.type==Hl)&&((f<=1||f>=Z-1)&&(f=io(f,Z)),(d<=1||d>=R-1)&&(d=io(d,R))),T?($s=f,Ds=d,[Mo,Eo]=I.move(o,
f,d)):(be=f,Te=d)}let rl={width:0,height:0,left:0,top:0};function il(){Hr(rl,!1)}let Is,zs,Hs,Vs;function Ws(i,u,f,d,h,b,k){
Sn=!0,Ke=je=et._x=et._y=!1,ol(i,u,f,d,h,b,k,!0,!1),i!=null&&(at(Vl,Kl,qs,!1),lr(Mu,o,Mo,Eo,Z,R,null));let{left:T,top:C,width:D,
height:N}=we;Is=T,zs=C,Hs=D,Vs=N}function qs(i,u,f,d,h,b,k){Sn=et._x=et._y=!1,ol(i,u,f,d,h,b,k,!1,!0);let{left:T,top:C,width:D,
height:N}=we,F=D>0||N>0,j=Is!=T||zs!=C||Hs!=D||Vs!=N;if(F&&j&&Hr(we),et.setScale&&F&&j){let ae=T,le=D,te=C,B=N;if(P.ori==
1&&(ae=C,le=N,te=T,B=D),Ke&&Tn(O,Yt(ae,O),Yt(ae+le,O)),je)for(let z in S){let ye=S[z];z!=O&&ye.from==null&&ye.min!=he&&Tn(
z,Yt(te+B,z),Yt(te,z))}il()}else I.lock&&(I._lock=!I._lock,Un(u,!0,i!=null));i!=null&&(mo(Vl,Kl),lr(Vl,o,be,Te,Z,R,null))}
function Rf(i,u,f,d,h,b,k){if(I._lock)return;Vn(i);let T=Sn;if(Sn){let C=!0,D=!0,N=10,F,j;P.ori==0?(F=Ke,j=je):(F=je,j=Ke),
F&&j&&(C=be<=N||be>=Z-N,D=Te<=N||Te>=R-N),F&&C&&(be=be<Mo?0:Z),j&&D&&(Te=Te<Eo?0:R),Un(null,!0,!0),Sn=!1}be=-10,Te=-10,de.
fill(null),Un(null,!0,!0),T&&(Sn=T)}function Us(i,u,f,d,h,b,k){I._lock||(Vn(i),Vi(),il(),i!=null&&lr(Pu,o,be,Te,Z,R,null))}
function Bs(){$.forEach(Ah),Hi(o.width,o.height,!0)}ao(Ei,Uo,Bs);let Ao={};Ao.mousedown=Ws,Ao.mousemove=Fs,Ao.mouseup=qs,
Ao.dblclick=Us,Ao.setSeries=(i,u,f,d)=>{let h=Oe.match[2];f=h(o,u,f),f!=-1&&Gt(f,d,!0,!1)},st&&(at(Mu,x,Ws),at(Hl,x,Fs),
at(Eu,x,i=>{Vn(i),ir(!1)}),at(Cu,x,Rf),at(Pu,x,Us),es.add(o),o.syncRect=ir);let Vr=o.hooks=e.hooks||{};function Ge(i,u,f){
Zi?nr.push([i,u,f]):i in Vr&&Vr[i].forEach(d=>{d.call(null,o,u,f)})}(e.plugins||[]).forEach(i=>{for(let u in i.hooks)Vr[u]=
(Vr[u]||[]).concat(i.hooks[u])});let Ks=(i,u,f)=>f,Oe=Fe({key:null,setSeries:!1,filters:{pub:Hu,sub:Hu},scales:[O,y[1]?y[1].
scale:null],match:[Vu,Vu,Ks],values:[null,null]},I.sync);Oe.match.length==2&&Oe.match.push(Ks),I.sync=Oe;let js=Oe.key,ll=Fc(
js);function lr(i,u,f,d,h,b,k){Oe.filters.pub(i,u,f,d,h,b,k)&&ll.pub(i,u,f,d,h,b,k)}ll.sub(o);function Of(i,u,f,d,h,b,k){
Oe.filters.sub(i,u,f,d,h,b,k)&&Ao[i](null,u,f,d,h,b,k)}o.pub=Of;function Ff(){ll.unsub(o),es.delete(o),On.clear(),Yl(Ei,
Uo,Bs),m.remove(),ce?.remove(),Ge("destroy")}o.destroy=Ff;function sl(){Ge("init",e,t),ks(t||e.data,!1),V[O]?Xi(O,V[O]):
Vi(),Nr=we.show&&(we.width>0||we.height>0),Hn=Mt=!0,Hi(e.width,e.height)}return y.forEach(ys),$.forEach(hf),n?n instanceof
HTMLElement?(n.appendChild(m),sl()):n(o,sl):sl(),o}Ze.assign=Fe;Ze.fmtNum=ss;Ze.rangeNum=Ci;Ze.rangeLog=$i;Ze.rangeAsinh=
is;Ze.orient=co;Ze.pxRatio=ue;Ze.join=ym;Ze.fmtDate=us,Ze.tzDate=Dm;Ze.sync=Fc;{Ze.addGap=mh,Ze.clipGaps=Ni;let e=Ze.paths=
{points:qc};e.linear=Bc,e.stepped=vh,e.bars=_h,e.spline=wh}var Yc=150;function Ii(e,t){e.style.color=t;let n=getComputedStyle(e).color;return e.style.color="",n}function $h(e,t){if(e===
null||t===null)return[0,1];let n=Math.max((t-e)*.15,t*.05,1);return[Math.max(0,e-n),t+n]}function Dh({data:[e]}){let t=e.
at(-1)??Date.now()/1e3;return[Math.min(e[0]??t,t-60),t]}function gs({data:e}){let t=e[1]??[];for(let n=t.length-1;n>=0;--n)
if(t[n]!=null)return n}var Lh=e=>{let t=gs(e);return t===void 0?null:[t]};function Nh(e,t){let n=Ii(e,"var(--muted)"),o={
stroke:Ii(e,"var(--line)"),width:1},r=Ii(e,`var(${t.colour})`),s=Ii(e,`color-mix(in srgb, var(${t.colour}) 14%, transpar\
ent)`),a="11px system-ui, sans-serif";return{width:Math.max(100,e.clientWidth),height:Yc,padding:[8,null,null,null],legend:{
show:!1},cursor:{y:!1,sync:{key:"history"},points:{size:6},drag:{x:!1,y:!1}},scales:{x:{range:Dh},y:{range:(c,p,m)=>$h(p,
m)}},tzDate:c=>Ee.peek()==="utc"?Ze.tzDate(new Date(c*1e3),"UTC"):new Date(c*1e3),axes:[{stroke:n,font:a,grid:o,ticks:{show:!1},
size:24,space:76,values:Rh},{stroke:n,font:a,grid:o,ticks:{show:!1},size:72,space:28,incrs:t.steps,values:(c,p)=>gs(c)===
void 0?[]:p.map(t.format)}],series:[{},{stroke:r,width:1.6,fill:s,points:{show:!1,filter:Lh,size:6,fill:r}}]}}var Rh=[[3600,
"{HH}:{mm}",null,null,null,null,null,null,1],[60,"{HH}:{mm}",null,null,null,null,null,null,1],[1,"{HH}:{mm}:{ss}",null,null,
null,null,null,null,1]];function Oh(e,t,{format:n,empty:o}){if(!t)return;let r=gs(e),s=e.cursor.idx??r,a=s===void 0?void 0:
e.data[1]?.[s],c=s===void 0?void 0:e.data[0][s];r===void 0?t.textContent=o:a==null||c===void 0?t.textContent="":s===r?t.
textContent=n(a):t.textContent=`${n(a)} at ${gi(c*1e3,Ee.peek())}`}function vs(e){let t=Le(null),n=Le(null),o=Le(null),r=[
e.times,e.values],s=`${pn.value} ${Ee.value} ${fu.value}`;return Pe(()=>{let a=t.current;if(!a)return;let c=Nh(a,e),p=_=>Oh(
_,n.current,e);c.hooks={ready:[p],setCursor:[p],setData:[p]};let m=new Ze(c,r,a);o.current=m;let g=new ResizeObserver(()=>{
a.clientWidth>0&&m.setSize({width:a.clientWidth,height:Yc})});return g.observe(a),()=>{g.disconnect(),m.destroy()}},[s]),
Pe(()=>o.current?.setData(r)),l("figure",{class:"chart",children:[l("figcaption",{children:[e.title," ",l("span",{class:"\
readout",ref:n})]}),l("div",{ref:t,role:"img","aria-label":e.label})]})}var Fh=[["10 min",600],["1 h",3600],["all",Number.POSITIVE_INFINITY]],Ih=Array.from({length:12},(e,t)=>[1,2,5].map(n=>n*
10**t)).flat(),zh=86400,Hh=[1,2,5,10,30,60,120,300,600,1800,3600,7200,21600,43200].concat([1,2,5,10,20,50,100,200,500,1e3,
5e3,1e4].map(e=>e*zh));function Qc(e,t,n){return e.map(o=>{let r=o.queues.get(t);return r?n(r)??null:null})}function Jc(e,t,n){
let o=t.filter(c=>c!==null),r=o.at(-1);if(r===void 0)return`${e}: nothing yet`;let s=n(Math.min(...o)),a=n(Math.max(...o));
return`${e}: now ${n(r)}, between ${s} and ${a}`}function Zc({range:e}){return l("fieldset",{class:"choices",children:[l(
"legend",{class:"unseen",children:"Time shown"}),Fh.map(([t,n])=>l("button",{type:"button","aria-pressed":e.value===n,onClick:()=>e.
value=n,children:t},t))]})}function Xc({queue:e,seconds:t}){let n=Date.now()/1e3,o=cn.value.filter(c=>n-c.time<=t),r=o.map(
c=>c.time),s=Qc(o,e,c=>c.count),a=Qc(o,e,c=>c.oldestAge);return l(me,{children:[l(vs,{title:"Events",label:Jc("Events in\
 the queue",s,G),colour:"--accent",times:r,values:s,format:G,steps:Ih,empty:"not seen yet"}),l(vs,{title:"Age of the old\
est",label:Jc("Age of the oldest event",a,hn),colour:"--second",times:r,values:a,format:iu,steps:Hh,empty:"nothing waits"})]})}function Zo({name:e,children:t,note:n}){return l("div",{class:"card figure-card",children:[l("dt",{children:e}),l("dd",{
class:"figure",children:t}),l("dd",{class:"note",children:n})]})}function Vh(e){let t=e.flatMap(n=>n.oldest===void 0?[]:
[Number(n.oldest)]);return t.length>0?Math.min(...t):void 0}function Wh({now:e}){let t=Vh(e.queues),n=e.queues.reduce((c,p)=>c+
p.damaged,0),o=e.queues.length,r=e.rates?.written?.["1m"]??0,s=e.rates?.deleted?.["1m"]??0,a=Fl(r,s);return l("dl",{class:"\
figures",children:[l(Zo,{name:"Events in the queues",note:n>0?`${G(n)} of them damaged`:`in ${o} queue${o===1?"":"s"}`,children:G(
e.count)}),l(Zo,{name:"Age of the oldest",note:t===void 0?"nothing waits":`since ${rt(t,Ee.value)}`,children:t===void 0?
"–":zo(t)}),l(Zo,{name:"Written",note:"mean of the last minute",children:a(r)}),l(Zo,{name:"Deleted",note:"mean of the\
 last minute",children:a(s)}),l(Zo,{name:"Waiting readers",note:`${G(e.connections)} connection${e.connections===1?"":"s"}`,
children:G(e.waiting)}),l(Zo,{name:"Running for",note:`${e.version}, durability ${e.durability}`,children:hn(Date.now()/
1e3-e.startTime)})]})}function qh({now:e}){let t=e.rates?.byType??{},n=Object.keys(t).filter(s=>!Ln.some(a=>a===s)),o=Math.
max(...Object.values(t),Number.MIN_VALUE),r=Fl(o);return l("section",{class:"card","aria-labelledby":"rates-title",children:[
l("h2",{id:"rates-title",children:"Written by kind"}),l("table",{class:"rates",children:[l("thead",{class:"unseen",children:l(
"tr",{children:[l("th",{scope:"col",children:"Kind"}),l("th",{scope:"col",children:"Share"}),l("th",{scope:"col",children:"\
Rate"})]})}),l("tbody",{children:[...Ln,...n].map(s=>l("tr",{children:[l("th",{scope:"row",children:l(vn,{name:s})}),l("\
td",{class:"bar-cell","aria-hidden":"true",children:l("div",{class:"bar","data-kind":s,children:l("div",{style:{width:`${100*
(t[s]??0)/o}%`}})})}),l("td",{class:"figure",children:r(t[s]??0)})]},s))})]})]})}function Uh(e){let{main:t,details:n}=bi(
e);return[t,...n.slice(0,1)].join(", ")}function Bh(){let e=Je.value.slice(0,8);return l("section",{class:"card","aria-l\
abelledby":"newest-title",children:[l("h2",{id:"newest-title",children:["Newest events",lt.value==="0"?"":` of ${lt.value}`]}),
e.length===0?l("p",{class:"muted",children:"None have been seen yet."}):null,l("ul",{class:"newest",children:e.map(t=>l(
"li",{children:l("a",{href:`#/events/${t.dsid}/${t.id}`,onClick:n=>{n.preventDefault(),No(String(t.dsid),String(t.id))},
children:[l("span",{class:"when",children:lu(t.date,Ee.value)}),l(vn,{name:t.kind}),l("span",{class:"what",children:_e(Uh(
t))})]})},`${t.dsid}/${t.id}`))})]})}function ef(){let e=An("all"),t=An(600),n=Ve.value;return n?l("div",{class:"overvie\
w",children:[l("h2",{class:"unseen",children:"Overview"}),l(Wh,{now:n}),l("div",{class:"stack",children:[l("section",{class:"\
card charts","aria-labelledby":"charts-title",children:[l("div",{class:"card-head",children:[l("h2",{id:"charts-title",children:"\
While this page is open"}),l(Zc,{range:t}),l("label",{children:[l("span",{class:"unseen",children:"Queue of the charts"}),
l("select",{value:e.value,onChange:o=>e.value=o.currentTarget.value,children:[l("option",{value:"all",children:"all queu\
es"}),n.queues.map(o=>l("option",{value:String(o.dsid),children:Vo(o)},o.dsid))]})]})]}),l(Xc,{queue:e.value,seconds:t.value})]}),
l(Bh,{})]}),l("div",{class:"stack",children:[l("section",{class:"card","aria-labelledby":"near-title",children:[l("h2",{
id:"near-title",children:"Near the limits"}),l(xi,{now:n})]}),l(qh,{now:n})]})]}):l("p",{class:"empty",children:"Waiting\
 for the first figures …"})}function Kh(e){let t=n=>{let o=Ln.indexOf(n);return o<0?Ln.length:o};return Object.entries(e.types).sort(([n],[o])=>t(n)-
t(o))}function jh({queue:e}){let t=Kh(e);if(e.count===0)return l("span",{class:"muted",children:"empty"});let n=t.map(([
o,r])=>`${o} ${G(r)}`).join(", ");return l("div",{class:"mixture",role:"img","aria-label":n,title:n,children:t.map(([o,r])=>l(
"div",{"data-kind":o,style:{flexGrow:r}},o))})}function Gh({queue:e}){return l("tr",{children:[l("th",{scope:"row",children:[
l("a",{href:"#/events",onClick:n=>{n.preventDefault(),lt.value=String(e.dsid),Qn("events")},children:Vo(e)}),e.known?null:
l("span",{class:"badge warn",children:"not known"})]}),l("td",{class:"figure number",children:G(e.count)}),l("td",{class:"\
figure",children:e.oldest===void 0?"–":zo(e.oldest)}),l("td",{class:e.damaged>0?"figure number problem":"figure number",
children:G(e.damaged)}),l("td",{class:"figure",children:e.newest===void 0?"–":rt(e.newest,Ee.value)}),l("td",{class:"f\
igure number",children:G(e.highestId)}),l("td",{class:"figure number",children:e.type??"–"}),l("td",{class:"wide",children:l(
jh,{queue:e})})]})}function tf(){let e=Ve.value?.queues??[];return l("section",{class:"card","aria-labelledby":"queues-t\
itle",children:[l("h2",{id:"queues-title",children:"Queues"}),l("p",{class:"muted",children:"The global queue and the qu\
eues of the data selections."}),l(yi,{label:"Table of the queues",children:l("table",{class:"data",children:[l("thead",{
children:l("tr",{children:[l("th",{scope:"col",children:"queue"}),l("th",{scope:"col",class:"number",children:"events"}),
l("th",{scope:"col",children:"oldest"}),l("th",{scope:"col",class:"number",children:"damaged"}),l("th",{scope:"col",children:"\
newest"}),l("th",{scope:"col",class:"number",children:"highest id"}),l("th",{scope:"col",class:"number",children:"type"}),
l("th",{scope:"col",children:"kinds"})]})}),l("tbody",{children:e.map(t=>l(Gh,{queue:t},t.dsid))})]})})]})}var _s=!1;Qe(()=>{ot.value.is==="down"?_s=!0:ot.value.is==="up"&&_s&&(_s=!1,gn("The server answers again."))});function Yh({
since:e}){let t=Ve.value?" What you see below is what it said last.":"";return l("div",{class:"banner bad",role:"alert",
children:[l("p",{children:[l("strong",{children:"The server does not answer"})," since ",gi(e,Ee.value),". The page keep\
s trying.",t]}),l("button",{type:"button",onClick:Jn,children:"Try now"})]})}function nf({title:e,text:t}){return l("div",
{class:"banner warn",role:"alert",children:l("p",{children:[l("strong",{children:e})," ",t]})})}function Qh({at:e}){return l(
"div",{class:"banner",role:"status",children:[l("p",{children:["The server was started again at ",rt(e,Ee.value),"."]}),
l("button",{type:"button",onClick:()=>dn.value=void 0,children:"Close"})]})}function of(){let e=ot.value;return e.is==="\
down"?l(Yh,{since:e.since}):Ae.value==="out"?null:l(me,{children:[e.is==="troubled"?l(nf,{title:"The server has trouble.",
text:e.why}):null,Oo.value?l(nf,{title:"The queue is not ready.",text:Oo.value}):null,dn.value===void 0?null:l(Qh,{at:dn.
value})]})}function Jh(e){if(e==="queues"&&Ve.value?.queues.some(n=>n.damaged>0))return"damaged events";let t=en.value?.members??[];
if(e==="cluster"&&t.some(n=>!n.reachable))return"a member does not answer"}function Zh({text:e}){return e?l("span",{class:"\
dot",role:"img","aria-label":e,title:e}):null}function Xh(e){return e==="check"?ai("admin"):e==="cluster"?en.value!==void 0||
Xt.value==="cluster":!0}function eg(){let e=Le(null);return Pe(()=>{e.current?.querySelector("[aria-current]")?.scrollIntoView(
{block:"nearest",inline:"nearest"})},[Xt.value,Ae.value]),e}function tg(){let e=eg();return Ae.value!=="in"?null:l("nav",
{ref:e,"aria-label":"Views",children:hr.filter(Xh).map(t=>l("a",{href:`#/${t}`,"aria-current":Xt.value===t?"page":void 0,
onClick:n=>{n.preventDefault(),Qn(t)},children:[ni[t],l(Zh,{text:Jh(t)})]},t))})}var ng={unknown:["connecting",""],up:["\
connected","ok"],down:["no answer","bad"],troubled:["in trouble","warn"]};function og(){let[e,t]=ng[ot.value.is];return l(
"span",{class:`state ${t}`,"data-testid":"state",children:e})}function rg(){if(!fn.value)return null;let{name:e,role:t,via:n}=fn.
value;return l("div",{class:"identity",children:[l("span",{title:`known by ${n}`,children:[e?l("span",{class:"name",children:e}):
null," ",l("span",{class:"role",children:t})]}),Ra.value?l("button",{type:"button",class:"plain",onClick:Fa,children:"Lo\
g out"}):null]})}function rf(){return l("header",{children:[l("div",{class:"title",children:[l(bn,{name:"mark"}),l("h1",
{children:"eventd"}),l("span",{class:"host",children:location.host})]}),Ae.value==="out"?null:l(og,{}),l(tg,{}),l("div",
{class:"tools",children:[l("button",{type:"button",class:"zone with-icon",onClick:fi,"aria-label":`Times: ${Dn(Ee.value)}`,
title:`Times are those of ${Dn(Ee.value)} (u: local or UTC)`,children:[l(bn,{name:"clock"})," ",hi(Ee.value)]}),l("butto\
n",{type:"button",class:"icon",onClick:ci,"aria-label":`Theme: ${pn.value}`,title:`Theme: ${pn.value}`,children:l(bn,{name:pn.
value})}),l("button",{type:"button",class:"icon","aria-label":"Help and shortcuts",title:"Help and shortcuts (?)",onClick:()=>Ho.
value=!0,children:l(bn,{name:"help"})}),l(rg,{})]})]})}function ig(){return document.querySelector("link[rel=license]")?.href}function lf(){let e=()=>Ho.value=!1;return l(_i,{
open:Ho.value,title:"Help",onClose:e,children:[l("p",{children:"This page shows the event queues of this server as they \
are. It asks for the figures every two seconds; events arrive as they are stored."}),l("table",{class:"shortcuts",children:[
l("caption",{children:"Shortcuts"}),l("tbody",{children:gu.map(([t,n])=>l("tr",{children:[l("th",{scope:"row",children:l(
"kbd",{children:t})}),l("td",{children:n})]},t))})]}),l("label",{class:"choice",children:[l("input",{type:"checkbox",checked:br.
value==="on",onChange:t=>br.value=t.currentTarget.checked?"on":"off"}),"Shortcuts of single keys"]}),l("p",{class:"muted",
children:["Programs have the same from ",l("a",{href:"/openapi.json",children:"the server's API"}),". Parts of this page\
 are the work of others, under ",l("a",{href:ig(),children:"their licences"}),"."]}),l("div",{class:"actions",children:l(
"button",{type:"button",onClick:e,children:"Close"})})]})}var lg={overview:ef,events:bu,queues:tf,limits:yu,check:au,cluster:uu};function sg(){if(Ae.value==="out")return l(xu,{});
if(Ae.value==="starting"||!fn.value)return l("p",{class:"empty",role:"status",children:ot.value.is==="unknown"?"Asking t\
he server …":"Waiting for the server …"});let e=lg[Xt.value];return l(e,{})}function sf(){return Pe(vu,[]),l(me,{children:[
l("a",{class:"skip",href:"#main",onClick:ag,children:"Skip to the content"}),l(rf,{}),l(of,{}),l("main",{id:"main",tabIndex:-1,
children:l(sg,{})}),l(lf,{}),l("div",{class:"unseen",role:"status","aria-live":"polite",children:vi.value})]})}function ag(e){
e.preventDefault(),document.getElementById("main")?.focus()}function ug(){Ua(),Pl()||Oa(),addEventListener("hashchange",()=>{Pl()&&_r().catch(()=>{}).finally(Jn)}),addEventListener(
"online",Jn),document.addEventListener("visibilitychange",()=>{document.visibilityState==="visible"&&Jn()}),Qe(()=>{Ae.value===
"out"&&qa(),Ae.value==="in"&&Jn()}),Qe(()=>{let t=ot.value.is==="down"?"no answer – ":"",n=Ae.value==="in"?` – ${ni[Xt.
value]}`:"";document.title=`${t}eventd ${location.host}${n}`}),ou(),Wa();let e=document.getElementById("page");e&&sa(l(sf,
{}),e)}ug();
